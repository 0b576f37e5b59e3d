#include "inspect/show/show_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "inspect/report/command_status.h"
#include "inspect/show/read_file.h"
#include "inspect/show/show_json.h"
#include "inspect/show/show_options.h"
#include "inspect/show/show_text.h"
#include "platform/converter_watch.h"

namespace sealkeeper {
namespace {

int Show(const ShowOptions& options, Console& console) {
    const ConverterWatch converter;
    std::string failure;
    const auto file = ReadFileToShow(options.path, options.productId, failure);
    if (!file) {
        console.Fail("'" + options.path + "': " + failure);
        return kStatusError;
    }
    // Its paths would be shown by an error text.
    if (converter.RequireSound() != ResultCode::Ok) {
        console.Fail("'" + options.path + "': " + LastLoggedError());
        return kStatusError;
    }
    if (options.isJson) {
        WriteShowJson(*file, options, console);
    } else {
        WriteShowText(*file, options, console);
    }
    return StatusOf(file->shown);
}

}  // namespace

void AddShowCommand(CLI::App& program, Console& console, int& status) {
    auto* const command = program.add_subcommand(
        "show", "Show what a catalogue or a runtime.conf holds, or what makes it invalid");
    const auto options = std::make_shared<ShowOptions>();
    command->add_option("FILE", options->path, "The file")->type_name("")->required();
    command
        ->add_option("--product", options->productId,
                     "Tell whether the certificate is trusted for this product id, too")
        ->type_name("ID");
    command->add_flag("--digests", options->hasDigests, "Show the digests of the entries");
    command->add_option("--limit", options->limit, "Show so many entries at the most")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    command->add_flag("--json", options->isJson, "Report as JSON");
    command->callback([options, &console, &status] { status = Show(*options, console); });
}

}  // namespace sealkeeper
