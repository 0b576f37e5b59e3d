// Key files, good, odd and damaged, and what becomes of each with both versions of mbed TLS. The
// tables of docs/private-keys.md are these, row for row.
#ifndef SEALKEEPER_TESTS_RUNTIME_KEY_FILE_TABLES_H
#define SEALKEEPER_TESTS_RUNTIME_KEY_FILE_TABLES_H

#include <string>
#include <vector>

#include "support/credentials.h"

namespace sealkeeper::test {

// What becomes of a file, as the page has it: "taken", a result code, or "no pair" where the key is
// read and then found not to belong to the certificate.
struct KeyOutcome {
    std::string with228;
    std::string with3;
};

struct KeyFile {
    std::string name;
    std::string content;
    std::string certificatePath = CertificatePath("good");
};

// Files of which the same becomes.
struct KeyFileRow {
    std::string file;
    KeyOutcome outcome;
    std::vector<KeyFile> files;
};

// What a file holds in DER, and the label that it has in PEM.
struct EncodedKey {
    std::string name;
    std::string pemLabel;
    std::string der;
};

// Keys of which the same becomes, each tried in a DER file and in a PEM file.
struct EncodedKeyRow {
    std::string key;
    KeyOutcome asDer;
    KeyOutcome asPem;
    std::vector<EncodedKey> keys;
};

[[nodiscard]] std::vector<EncodedKeyRow> EncodedKeyTable();
[[nodiscard]] std::vector<KeyFileRow> KeyFileTable();

}  // namespace sealkeeper::test

#endif
