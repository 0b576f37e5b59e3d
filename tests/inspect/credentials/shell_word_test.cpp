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

TEST(ShellWord, OfCommands) {
    EXPECT_EQ(ShellCommand("cp {in} {out} && cat {out}", "a", "b"), "cp a b && cat b");
    EXPECT_EQ(ShellCommand("<{in}>{out}", "my key", "-x"), "<'my key'>./-x");
    // A path that holds a placeholder is not expanded.
    EXPECT_EQ(ShellCommand("{in} {out}", "{out}", "{in}"), "'{out}' '{in}'");
    EXPECT_EQ(ShellCommand("{i", "a", "b"), "{i");
    EXPECT_EQ(ShellCommand("", "a", "b"), "");
}

}  // namespace
}  // namespace sealkeeper
