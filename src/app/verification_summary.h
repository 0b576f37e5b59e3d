// How many files of a verified game ended with which result code.
#ifndef SEALKEEPER_APP_VERIFICATION_SUMMARY_H
#define SEALKEEPER_APP_VERIFICATION_SUMMARY_H

#include <map>

#include "app/result_code.h"

namespace sealkeeper {

class VerificationSummary {
  public:
    // Counts a file that ended with `code`.
    void Add(ResultCode code);

    // Logs one line for each code, in ascending order.
    void Print() const;

    // The result for all files: the code of the last one where that failed, else the smallest code
    // of a failure, else `Ok`. A deliberate tie-break, neither the highest nor the first failure.
    ResultCode Result() const;

  private:
    std::map<ResultCode, int> counts_;
    ResultCode last_ = ResultCode::Ok;
};

}  // namespace sealkeeper

#endif
