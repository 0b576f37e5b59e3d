#include "inspect/command_line/product_fault.h"

namespace sealkeeper {

std::string EmptyProductFault(const std::string& productId) {
    return productId.empty() ? "a product id is required" : "";
}

}  // namespace sealkeeper
