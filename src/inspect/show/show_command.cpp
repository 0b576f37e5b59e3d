#include "inspect/show/show_command.h"

#include <limits>
#include <memory>
#include <string>

#include "inspect/command_line/product_fault.h"
#include "inspect/report/command_status.h"
#include "inspect/report/logged_error.h"
#include "inspect/show/read_file.h"
#include "inspect/show/show_json.h"
#include "inspect/show/show_options.h"
#include "inspect/show/show_text.h"
#include "platform/converter_watch.h"

namespace sealkeeper {
namespace {

int FailToShow(const ShowOptions& options, const std::string& reason, Console& console) {
    const std::string failure = "'" + options.path + "': " + reason;
    if (options.isJson) {
        WriteShowFailureJson(options.path, failure, console);
    }
    console.Fail(failure);
    return kStatusError;
}

int Show(const ShowOptions& options, Console& console) {
    const ConverterWatch converter;
    std::string failure;
    const auto file = ReadFileToShow(options.path, options.productId, failure);
    if (!file) {
        return FailToShow(options, failure, console);
    }
    // Otherwise the converter's error text would be shown in place of paths.
    if (converter.RequireSound() != ResultCode::Ok) {
        return FailToShow(options, LastLoggedError(), console);
    }
    if (options.isJson) {
        WriteShowJson(*file, options, console);
    } else {
        WriteShowText(*file, options, console);
    }
    // Checked again: writing the report converts the paths once more.
    if (converter.RequireSound() != ResultCode::Ok) {
        console.Fail("'" + options.path + "': " + LastLoggedError());
        return kStatusError;
    }
    return StatusOf(file->shown);
}

}  // namespace

void AddShowCommand(CommandLine& commandLine, Console& console) {
    const auto options = std::make_shared<ShowOptions>();
    Command command = commandLine.AddCommand(
        "show", "Show what a catalogue or a runtime.conf holds, or what makes it invalid");
    command.AddOperand("FILE", "The file", options->path);
    command.AddText(
        {"--product", "ID", "Tell whether the certificate is trusted for this product id, too"},
        options->productId, EmptyProductFault);
    command.AddFlag("--digests", "Show the digests of the entries", options->hasDigests);
    command.AddNumber({"--limit", "N", "Show so many entries at the most"},
                      std::numeric_limits<std::uint64_t>::max(), options->limit);
    command.AddFlag("--json", "Report as JSON", options->isJson);
    command.SetRun([options, &console] { return Show(*options, console); });
}

}  // namespace sealkeeper
