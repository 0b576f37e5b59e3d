// A JSON object whose last members are arrays written element by element, so that no more than one
// element is in memory.
#ifndef SEALKEEPER_INSPECT_SHOW_JSON_STREAM_H
#define SEALKEEPER_INSPECT_SHOW_JSON_STREAM_H

#include <string_view>

#include "inspect/report/console.h"
#include "inspect/report/json.h"

namespace sealkeeper {

// The text is that of `JsonText` of the whole document.
class JsonStream {
  public:
    // Writes the members of `head`, which has one at least.
    JsonStream(Console& console, const Json& head);

    // A member `name` whose elements are those added until the array ends.
    void BeginArray(std::string_view name);
    void Add(const Json& element);
    void EndArray();

    // An element that is an object in turn: the members of `head`, which has one at least, and then
    // an array `name` of what is added until the element ends.
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
