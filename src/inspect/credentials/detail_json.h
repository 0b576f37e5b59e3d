// Certificates, lists and files in JSON reports.
#ifndef SEALKEEPER_INSPECT_CREDENTIALS_DETAIL_JSON_H
#define SEALKEEPER_INSPECT_CREDENTIALS_DETAIL_JSON_H

#include "inspect/credentials/examined_file.h"
#include "inspect/report/json.h"
#include "inspect/x509/certificate_details.h"

namespace sealkeeper {

// "type" and "bits".
[[nodiscard]] Json KeyJson(const KeyDetails& key);

// Adds the members of a certificate to `object`.
void AddCertificateJson(const CertificateDetails& certificate, UtcTime now, Json& object);

// Adds the members of a list to `object`.
void AddListJson(const ListDetails& list, UtcTime now, Json& object);

// An object with "path", and "pathHex" if the path is not UTF-8. Has "mode" in octal digits and
// "kind" if they are known.
[[nodiscard]] Json FileJson(const ExaminedFile& file);

}  // namespace sealkeeper

#endif
