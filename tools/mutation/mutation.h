// Inserted before every source of the unit under mutation. Each condition passes through `Decide`,
// which returns it unchanged unless the environment chooses it.
#ifndef SEALKEEPER_TOOLS_MUTATION_H
#define SEALKEEPER_TOOLS_MUTATION_H

#include <cstdlib>
#include <string>
#include <type_traits>

namespace sealkeeper::mutation {

// SEALKEEPER_MUTANT is the number of a condition and the change to it: "12:invert", "12:true",
// "12:false".
struct Mutant {
    int condition = -1;
    std::string change;
};

inline const Mutant& ChosenMutant() {
    static const Mutant chosen = [] {
        const char* const text = std::getenv("SEALKEEPER_MUTANT");
        const std::string value = text == nullptr ? "" : text;
        const std::size_t colon = value.find(':');
        return colon == std::string::npos
                   ? Mutant{}
                   : Mutant{std::atoi(value.c_str()), value.substr(colon + 1)};
    }();
    return chosen;
}

constexpr bool Decide(int condition, bool value) {
    if (std::is_constant_evaluated()) {
        return value;
    }
    const Mutant& mutant = ChosenMutant();
    if (mutant.condition != condition) {
        return value;
    }
    return mutant.change == "invert" ? !value : mutant.change == "true";
}

}  // namespace sealkeeper::mutation

#endif
