#include "inspect/credentials/key_findings.h"

#include <sys/stat.h>

#include <array>

#include "inspect/credentials/kind_cure.h"
#include "inspect/credentials/shell_word.h"

namespace sealkeeper {
namespace {

constexpr const char* kWithoutPassword =
    "Write it without its password, which openssl asks for, and name the new file by --key (-inkey).";
constexpr const char* kWriteAnew =
    "Have openssl write it anew, if it can read it, and name the new file by --key (-inkey); else copy it from where it was kept.";
constexpr const char* kCopyKeyAnew = "Copy it anew from where it was kept.";

// The umask keeps the written key private.
constexpr std::array kKeyCures = {
    KindCure{FileKind::PemEncryptedKey, kWithoutPassword,
             "(umask 077; openssl pkcs8 -topk8 -nocrypt -in {in} -out {out})"},
    // "openssl pkcs8 -topk8" cannot read such a key.
    KindCure{FileKind::DerEncryptedKey, kWithoutPassword,
             "(umask 077; openssl pkey -inform DER -in {in} -out {out})"},
    KindCure{FileKind::OpenSshKey, "Convert a copy of it, and name that by --key (-inkey).",
             "(umask 077; cp {in} {out} && ssh-keygen -p -N '' -m PEM -f {out})"},
    KindCure{
        FileKind::Pkcs12, "Take the key out of it, and name the new file by --key (-inkey).",
        "(umask 077; openssl pkcs12 -nocerts -nodes -in {in} | openssl pkcs8 -topk8 -nocrypt -out {out})"},
    KindCure{FileKind::Utf16Text, "Convert it, and name the new file by --key (-inkey).",
             "(umask 077; iconv -f UTF-16 -t UTF-8 {in} > {out})"},
    KindCure{FileKind::PemPrivateKey, kWriteAnew,
             "(umask 077; openssl pkcs8 -topk8 -nocrypt -in {in} -out {out})"},
    KindCure{FileKind::DerPrivateKey, kWriteAnew,
             "(umask 077; openssl pkcs8 -topk8 -nocrypt -inform DER -in {in} -out {out})"},
    KindCure{FileKind::CutOffDer, kCopyKeyAnew, ""},
    KindCure{FileKind::Empty, kCopyKeyAnew, ""},
};

Cure CureOfKeyKind(const std::string& path, FileKind kind) {
    return FindCure(kKeyCures, kind, path, path + ".new")
        .value_or(Cure{"Name the private key, as a rule base_private.key, by --key."});
}

CredentialFinding UnreadKey(const KeyFacts& key) {
    const bool isMissing = key.file.type == FileType::Missing;
    return MakeError(
        isMissing ? "key-missing" : "key-unread", key.code,
        "The private key '" + key.file.path + "' cannot be " + (isMissing ? "found" : "read") +
            ": " + key.file.reasonUnread + ".",
        {"Name the private key, as a rule base_private.key, by --key, and let yourself read it."});
}

CredentialFinding RefusedKey(const KeyFacts& key) {
    if (!key.file.kind) {
        return UnreadKey(key);
    }
    const std::string& path = key.file.path;
    const FileKind kind = *key.file.kind;
    if (kind == FileKind::PemEncryptedKey || kind == FileKind::DerEncryptedKey) {
        return MakeError("key-password", key.code,
                         "'" + path + "' is " + FileKindText(kind) +
                             "; sealkeeper asks for none, and takes keys without one alone.",
                         CureOfKeyKind(path, kind));
    }
    if (kind == FileKind::PemPrivateKey || kind == FileKind::DerPrivateKey) {
        return MakeError(
            "key-damaged", key.code,
            "'" + path + "' is " + FileKindText(kind) +
                " that is damaged, or of a kind that the cryptographic library does not know.",
            CureOfKeyKind(path, kind));
    }
    return MakeError("not-a-key", key.code,
                     "'" + path + "' is " + FileKindText(kind) +
                         "; sealkeeper takes a private key in PEM or DER form.",
                     CureOfKeyKind(path, kind));
}

// Only the file's own mode. Permissions of directories are not checked.
CredentialFindings JudgeMode(const ExaminedFile& file) {
    constexpr unsigned kOthersRead = S_IRGRP | S_IROTH;
    constexpr unsigned kOthersWrite = S_IWGRP | S_IWOTH;
    if (!file.mode || (*file.mode & (kOthersRead | kOthersWrite)) == 0) {
        return {};
    }
    const bool canRead = (*file.mode & kOthersRead) != 0;
    const bool canWrite = (*file.mode & kOthersWrite) != 0;
    const char* const what = !canWrite ? "read" : !canRead ? "changed" : "read and changed";
    return {
        MakeWarning("key-mode",
                    std::string("The private key can be ") + what + " by others: its mode is " +
                        ModeText(*file.mode) + ".",
                    {"Let nobody else read or write it.", "chmod 600 " + ShellWord(file.path)})};
}

CredentialFindings JudgeRefused(const KeyFacts& key) {
    CredentialFindings findings = {RefusedKey(key)};
    if (key.file.kind && IsPrivateKey(*key.file.kind)) {
        Append(findings, JudgeMode(key.file));
    }
    return findings;
}

}  // namespace

CredentialFindings JudgeKey(const KeyFacts& key, const ExaminedFile& certificate) {
    if (key.code != ResultCode::Ok) {
        return JudgeRefused(key);
    }
    CredentialFindings findings;
    if (key.pairCode && *key.pairCode != ResultCode::Ok) {
        findings.push_back(MakeError(
            "no-pair", *key.pairCode,
            "The private key '" + key.file.path + "' is not that of the certificate '" +
                certificate.path + "'.",
            {"Find the key with which the certificate was requested, or have one issued for this key."}));
    }
    Append(findings, JudgeMode(key.file));
    return findings;
}

}  // namespace sealkeeper
