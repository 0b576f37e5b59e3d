// What is wrong with a product id on the command line.
#ifndef SEALKEEPER_INSPECT_COMMAND_LINE_PRODUCT_FAULT_H
#define SEALKEEPER_INSPECT_COMMAND_LINE_PRODUCT_FAULT_H

#include <string>

namespace sealkeeper {

// Empty unless `productId` is, with which no run of the tool gets as far as a certificate.
[[nodiscard]] std::string EmptyProductFault(const std::string& productId);

}  // namespace sealkeeper

#endif
