// The check of one file of the game against its entry.
#ifndef SEALKEEPER_CATALOGUE_FILE_VERIFICATION_H
#define SEALKEEPER_CATALOGUE_FILE_VERIFICATION_H

#include <string>

#include "app/result_code.h"
#include "catalogue/stored_entry.h"

namespace sealkeeper {

// What `StoredEntry::VerifyCatalogueFile` does.
ResultCode VerifyFile(const StoredEntry& entry, const std::wstring& path, MismatchHandler handler,
                      void* context);

}  // namespace sealkeeper

#endif
