#include "inspect/credentials/shell_word.h"

#include <gtest/gtest.h>

#include "inspect/credentials/openssl.h"

namespace sealkeeper {
namespace {

TEST(ShellWord, QuotesOnlyWhatNeedsIt) {
    EXPECT_EQ(ShellWord("/a/b-c_d.cer"), "/a/b-c_d.cer");
    EXPECT_EQ(ShellWord("a b"), "'a b'");
    EXPECT_EQ(ShellWord("a'b"), "'a'\\''b'");
    EXPECT_EQ(ShellWord("-in"), "./-in");
    EXPECT_EQ(ShellWord(""), "''");
}

TEST(ShellWord, IsReadBackByAShell) {
    for (const std::string path :
         {"a$(b)`c`", "~", "*", "a\"b\\c", "it's", "caf\xC3\xA9", "#a;b"}) {
        EXPECT_EQ(test::RunShell("/", "printf %s " + ShellWord(path)), path);
    }
}

}  // namespace
}  // namespace sealkeeper
