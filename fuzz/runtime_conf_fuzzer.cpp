// Feeds any bytes to list as an unscrambled runtime.conf.
#include <vector>

#include "app/console_log.h"
#include "fuzzer.h"
#include "runtime/runtime_configuration_reader.h"
#include "runtime/scramble.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace sealkeeper;
    g_logThreshold = LogLevel{0};
    std::vector<std::uint8_t> file(data, data + size);
    Scramble(file);
    RuntimeConfiguration configuration;
    const ResultCode code = ListRuntimeConfiguration(file, configuration);
    fuzz::Require((code == ResultCode::Ok) ==
                  (configuration.version == kRuntimeConfigurationVersion));
    // Listing leaves the file unscrambled.
    fuzz::Require(file == std::vector<std::uint8_t>(data, data + size));
    return 0;
}
