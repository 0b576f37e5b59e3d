// The layout of runtime.conf before it is scrambled, written once for writer and reader. All
// numbers are little-endian.
#ifndef SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_FORMAT_H
#define SEALKEEPER_RUNTIME_RUNTIME_CONFIGURATION_FORMAT_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "runtime/runtime_configuration.h"

namespace sealkeeper::runtime_file {

// "QVR" and a zero byte.
inline constexpr std::array<std::uint8_t, 4> kMagic = {0x51, 0x56, 0x52, 0x00};

inline constexpr std::size_t kMagicOffset = 0;
inline constexpr std::size_t kSignatureOffset = 4;
// Room for the signature of an 8192-bit key.
inline constexpr std::size_t kSignatureAreaBytes = 1024;
inline constexpr std::size_t kSignatureLengthOffset = 1028;
inline constexpr std::size_t kVersionOffset = 1032;
inline constexpr std::size_t kMaxActiveInstancesOffset = 1036;
inline constexpr std::size_t kCrashReporterNameOffset = 1040;
inline constexpr std::size_t kAntiTamperSolutionOffset = 1104;
inline constexpr std::size_t kSizeBytes = 1108;

static_assert(kSignatureOffset + kSignatureAreaBytes == kSignatureLengthOffset);
static_assert(kCrashReporterNameOffset + kCrashReporterNameBytes == kAntiTamperSolutionOffset);
static_assert(kAntiTamperSolutionOffset + sizeof(std::uint32_t) == kSizeBytes);

}  // namespace sealkeeper::runtime_file

#endif
