// The layout of runtime.conf before it is scrambled, shared by writer and reader. All numbers are
// little-endian.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_FORMAT_H
#define SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_FORMAT_H

#include <cstddef>
#include <cstdint>

#include "runtime/runtime_configuration.h"
#include "runtime/signed_file_format.h"

namespace sealkeeper::runtime_file {

inline constexpr std::size_t kMagicOffset = 0;
inline constexpr std::size_t kSignatureOffset = 4;
inline constexpr std::size_t kSignatureLengthOffset = 1028;
inline constexpr std::size_t kVersionOffset = 1032;
inline constexpr std::size_t kMaxActiveInstancesOffset = 1036;
inline constexpr std::size_t kCrashReporterNameOffset = 1040;
inline constexpr std::size_t kAntiTamperSolutionOffset = 1104;
inline constexpr std::size_t kSizeBytes = 1108;

static_assert(kSignatureOffset + signed_file::kSignatureAreaBytes == kSignatureLengthOffset);
static_assert(kCrashReporterNameOffset + kCrashReporterNameBytes == kAntiTamperSolutionOffset);
static_assert(kAntiTamperSolutionOffset + sizeof(std::uint32_t) == kSizeBytes);

}  // namespace sealkeeper::runtime_file

#endif
