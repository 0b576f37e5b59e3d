// Pairs a function of this library with the real one of the same name.
#ifndef SEALKEEPER_TESTS_FAULT_PRELOAD_INTERPOSED_H
#define SEALKEEPER_TESTS_FAULT_PRELOAD_INTERPOSED_H

#include <dlfcn.h>

#include <atomic>
#include <cerrno>
#include <optional>

#include "fault/preload/fault_plan.h"

namespace sealkeeper::fault {

template <typename Signature>
class Interposed;

template <typename Result, typename... Parameters>
class Interposed<Result(Parameters...)> {
  public:
    constexpr explicit Interposed(const char* name) : name_(name), counter_(name) {}

    std::optional<Fault> Next(const Subject& subject = {}) { return counter_.Next(subject); }

    Result Real(Parameters... parameters) {
        auto* real = real_.load(std::memory_order_relaxed);
        if (real == nullptr) {
            // POSIX has dlsym return functions as object pointers.
            real = reinterpret_cast<Result (*)(Parameters...)>(dlsym(RTLD_NEXT, name_));
            real_.store(real, std::memory_order_relaxed);
        }
        return real(parameters...);
    }

    // The real call; if the fault strikes, `failure` with its error in errno.
    Result OrFail(Result failure, const Subject& subject, Parameters... parameters) {
        if (const auto fault = Next(subject)) {
            errno = fault->value;
            return failure;
        }
        return Real(parameters...);
    }

    // The real call, then `failure` with the fault's error in errno. For functions that take effect
    // even when they fail.
    Result ThenFail(Result failure, const Subject& subject, Parameters... parameters) {
        const auto fault = Next(subject);
        const Result result = Real(parameters...);
        if (fault) {
            errno = fault->value;
            return failure;
        }
        return result;
    }

    // The real call; if the fault strikes, its value as the result.
    Result OrReturn(const Subject& subject, Parameters... parameters) {
        if (const auto fault = Next(subject)) {
            return fault->value;
        }
        return Real(parameters...);
    }

  private:
    const char* name_;
    CallCounter counter_;
    std::atomic<Result (*)(Parameters...)> real_ = nullptr;
};

}  // namespace sealkeeper::fault

#endif
