// Writes a JSON object whose last members are arrays, element by element. Only one element is in
// memory at a time.
#ifndef SEALKEEPER_INSPECT_SHOW_JSON_STREAM_H
#define SEALKEEPER_INSPECT_SHOW_JSON_STREAM_H

#include <string_view>

#include "inspect/report/console.h"
#include "inspect/report/json.h"

namespace sealkeeper {

// The output is identical to `JsonText` of the whole document.
class JsonStream {
  public:
    // Writes the members of `head`, which must not be empty.
    JsonStream(Console& console, const Json& head);

    // Begins an array member. The elements added up to its end belong to it.
    void BeginArray(std::string_view name);
    void Add(const Json& element);
    void EndArray();

    // Begins an element that is an object: the members of `head`, which must not be empty, followed
    // by an array member `name`. What is added up to the end of the element belongs to that array.
    void BeginElement(const Json& head, std::string_view name);
    void AddToElement(const Json& element);
    void EndElement();

    // Ends the document.
    void Finish();

  private:
    void BeginValue(bool& hasOthers, std::string_view indent);

    Console& console_;
    bool hasElements_ = false;
    bool hasInnerElements_ = false;
};

}  // namespace sealkeeper

#endif
