// A fixture that runs the list action.
#ifndef SEALKEEPER_TESTS_SUPPORT_LIST_FIXTURE_H
#define SEALKEEPER_TESTS_SUPPORT_LIST_FIXTURE_H

#include <gtest/gtest.h>

#include <string>

#include "app/list_action.h"
#include "support/captured_output.h"
#include "support/temp_directory.h"

namespace sealkeeper::test {

class ListFixture : public testing::Test {
  protected:
    // Runs the action on `path`, checks the first line and keeps the rest of the output in
    // `output_`.
    ResultCode List(const std::string& path) {
        CommandLineOptions options;
        options.listPath = path;
        CapturedOutput output;
        const ResultCode code = RunListAction(options);
        output_ = output.Take();
        const std::string first = "[Info] Performing list action on: '" + path + "'.\n";
        EXPECT_TRUE(output_.starts_with(first)) << output_;
        output_.erase(0, first.size());
        return code;
    }

    TempDirectory directory_;
    std::string output_;
};

}  // namespace sealkeeper::test

#endif
