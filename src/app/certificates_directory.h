// The standard folder of the signed files.
#ifndef SEALKEEPER_APP_CERTIFICATES_DIRECTORY_H
#define SEALKEEPER_APP_CERTIFICATES_DIRECTORY_H

namespace sealkeeper {

// Relative to the game directory.
inline constexpr const char* kCertificatesDirectory = "Quorvane/Certificates/";

}  // namespace sealkeeper

#endif
