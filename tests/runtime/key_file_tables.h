// Key files, good, odd and damaged, and their outcome with both versions of mbed TLS. The tables in
// docs/private-keys.md are these, row by row.
#ifndef SEALKEEPER_TESTS_RUNTIME_KEY_FILE_TABLES_H
#define SEALKEEPER_TESTS_RUNTIME_KEY_FILE_TABLES_H

#include <string>
#include <vector>

#include "support/credentials.h"

namespace sealkeeper::test {

// The outcome as the page has it: "taken", a result code, or "no pair" if the key is read but does
// not belong to the certificate.
struct KeyOutcome {
    std::string with228;
    std::string with3;
};

struct KeyFile {
    std::string name;
    std::string content;
    std::string certificatePath = CertificatePath("good");
};

// Files with the same outcome.
struct KeyFileRow {
    std::string file;
    KeyOutcome outcome;
    std::vector<KeyFile> files;
};

// The DER content of a file, and its label in PEM form.
struct EncodedKey {
    std::string name;
    std::string pemLabel;
    std::string der;
};

// Keys with the same outcome, each tried as a DER file and as a PEM file.
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
