#include "inspect/show/revocation_facts.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "runtime/mbedtls_contexts.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kPemStart = "-----BEGIN ";

std::string NameText(const mbedtls_x509_name& name) {
    // More than any name of a list that is in use.
    std::array<char, 1024> text{};
    const int length = mbedtls_x509_dn_gets(text.data(), text.size(), &name);
    return length < 0 ? "(a name that is too long to show)" : std::string(text.data());
}

// Empty for a time that is not there.
std::string TimeText(const mbedtls_x509_time& time) {
    if (time.year == 0) {
        return {};
    }
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", time.year, time.mon,
                  time.day, time.hour, time.min, time.sec);
    return text.data();
}

std::uint64_t CountRevoked(const mbedtls_x509_crl& list) {
    std::uint64_t count = 0;
    // The first element stands there even where the list is empty.
    for (const mbedtls_x509_crl_entry* entry = &list.entry; entry != nullptr && entry->raw.len != 0;
         entry = entry->next) {
        ++count;
    }
    return count;
}

}  // namespace

RevocationFacts RevocationFactsOf(std::span<const std::uint8_t> block) {
    RevocationFacts facts;
    facts.lengthBytes = block.size();
    if (block.empty()) {
        return facts;
    }
    RevocationList list;
    if (mbedtls_x509_crl_parse_der(list.Get(), block.data(), block.size()) != 0) {
        const bool isPem = block.size() >= kPemStart.size() &&
                           std::equal(kPemStart.begin(), kPemStart.end(), block.begin());
        facts.remark = isPem ? "text (PEM), not a list in DER" : "no revocation list in DER";
        return facts;
    }
    facts.isList = true;
    facts.issuer = NameText(list.Get()->issuer);
    facts.thisUpdate = TimeText(list.Get()->this_update);
    facts.nextUpdate = TimeText(list.Get()->next_update);
    facts.revoked = CountRevoked(*list.Get());
    return facts;
}

}  // namespace sealkeeper
