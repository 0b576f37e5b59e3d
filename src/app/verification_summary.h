// Counts the files of a verified game by result code.
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

    // The result for all files: the code of the last file if it failed, else the smallest code of
    // any failure, else `Ok`. This rule is deliberate: the result is neither the first failure nor
    // the highest code.
    ResultCode Result() const;

  private:
    std::map<ResultCode, int> counts_;
    ResultCode last_ = ResultCode::Ok;
};

}  // namespace sealkeeper

#endif
