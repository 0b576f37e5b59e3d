#include "config/config_scanner.h"

#include "config/config_values.h"
#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kSkippedBytes = " \t\r;";
constexpr std::string_view kNameEnd = " \t\n\r:";
constexpr std::string_view kKeyEnd = " \t\n\r=";
constexpr std::size_t kNotFound = std::string_view::npos;

std::string LowerCased(std::string_view name) {
    std::string lowered(name);
    LowerCaseAscii(lowered);
    return lowered;
}

}  // namespace

bool ConfigScanner::Scan() {
    Step step = Step::Continue;
    while (step == Step::Continue) {
        step = ScanToken();
    }
    return step != Step::Fail;
}

ConfigScanner::Step ConfigScanner::ScanToken() {
    position_ = text_.find_first_not_of(kSkippedBytes, position_);
    // The last byte of the text deliberately never starts a token.
    if (position_ == kNotFound || position_ >= text_.size() - 1) {
        return Step::Stop;
    }
    if (TakeCommentMarker()) {
        return Step::Continue;
    }
    const char current = text_[position_];
    if (current == '\n') {
        inComment_ = inBlockComment_;
        ++position_;
        return Step::Continue;
    }
    if (inComment_) {
        ++position_;
        return Step::Continue;
    }
    if (section_ == nullptr) {
        return TakeSectionHeader();
    }
    if (current == '}') {
        section_ = nullptr;
        ++position_;
        return Step::Continue;
    }
    return pendingKey_.empty() ? TakeKey() : TakeValue();
}

// Markers count inside comments as well: a "/*" in a line comment opens a block comment.
bool ConfigScanner::TakeCommentMarker() {
    if (text_[position_] == '#') {
        inComment_ = true;
        ++position_;
        return true;
    }
    if (StartsWith("//")) {
        inComment_ = true;
    } else if (StartsWith("/*")) {
        inBlockComment_ = true;
        inComment_ = true;
    } else if (inBlockComment_ && StartsWith("*/")) {
        inBlockComment_ = false;
        inComment_ = false;
    } else {
        return false;
    }
    position_ += 2;
    return true;
}

ConfigScanner::Step ConfigScanner::TakeSectionHeader() {
    if (text_[position_] == ':') {
        return Step::Stop;
    }
    const std::size_t nameEnd = text_.find_first_of(kNameEnd, position_ + 1);
    if (nameEnd == kNotFound) {
        return Step::Stop;
    }
    ConfigSection& section =
        document_.OpenSection(LowerCased(text_.substr(position_, nameEnd - position_)));
    const std::size_t brace = text_.find('{', nameEnd + 1);
    if (brace == kNotFound) {
        return Step::Stop;
    }
    section_ = &section;
    position_ = brace + 1;
    return Step::Continue;
}

ConfigScanner::Step ConfigScanner::TakeKey() {
    if (text_[position_] == '=') {
        return Step::Stop;
    }
    const std::size_t keyEnd = text_.find_first_of(kKeyEnd, position_ + 1);
    if (keyEnd == kNotFound) {
        return Step::Stop;
    }
    pendingKey_ = LowerCased(text_.substr(position_, keyEnd - position_));
    position_ = text_.find_first_not_of(kKeyEnd, keyEnd);
    return position_ == kNotFound ? Step::Stop : Step::Continue;
}

ConfigScanner::Step ConfigScanner::TakeValue() {
    ConfigSection& section = *section_;
    const char first = text_[position_];
    if (first == '[') {
        return TakeStringList(section);
    }
    if (first == '(') {
        return TakePairTable(section);
    }
    if (first == '"') {
        return TakeString(section);
    }
    if (first >= '0' && first <= '9') {
        return TakeNumber(section);
    }
    return TakeWord(section);
}

ConfigScanner::Step ConfigScanner::TakeStringList(ConfigSection& section) {
    const std::size_t begin = position_ + 1;
    const std::size_t end = text_.find(']', begin);
    if (end == kNotFound || end == begin) {
        return Step::Stop;
    }
    auto parsed = ParseStringList(text_.substr(begin, end - begin));
    if (!parsed) {
        return Step::Fail;
    }
    StringList& list = section.stringLists.Get(pendingKey_);
    list.insert(list.end(), parsed->begin(), parsed->end());
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakePairTable(ConfigSection& section) {
    const std::size_t begin = position_ + 1;
    const std::size_t end = text_.find(')', begin);
    if (end == kNotFound || end == begin) {
        return Step::Stop;
    }
    // A name that is there already keeps its earlier value.
    section.stringPairTables.Get(pendingKey_)
        .merge(ParseStringPairs(text_.substr(begin, end - begin)));
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakeString(ConfigSection& section) {
    const std::size_t begin = position_ + 1;
    const std::size_t end = text_.find('"', begin);
    if (end == kNotFound) {
        return Step::Stop;
    }
    section.strings.Get(pendingKey_) =
        UnescapeBackslashes(std::string(text_.substr(begin, end - begin)));
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakeNumber(ConfigSection& section) {
    section.flags.Get(pendingKey_) = text_[position_] != '0';
    const std::size_t end = text_.find(';', position_);
    if (end == kNotFound) {
        return Step::Stop;
    }
    section.integers.Get(pendingKey_) = ParseNumber(text_.substr(position_, end - position_));
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakeWord(ConfigSection& section) {
    constexpr std::string_view kTrue = "true";
    constexpr std::string_view kFalse = "false";
    // The byte after the word is passed over unexamined, even where it is a closing brace.
    if (EqualsIgnoringCase(kTrue)) {
        section.flags.Get(pendingKey_) = true;
        return StoreAndContinueAt(position_ + kTrue.size() + 1);
    }
    if (EqualsIgnoringCase(kFalse)) {
        section.flags.Get(pendingKey_) = false;
        return StoreAndContinueAt(position_ + kFalse.size() + 1);
    }
    return Step::Stop;
}

bool ConfigScanner::StartsWith(std::string_view marker) const {
    return text_.substr(position_, marker.size()) == marker;
}

bool ConfigScanner::EqualsIgnoringCase(std::string_view lowerCaseWord) const {
    return LowerCased(text_.substr(position_, lowerCaseWord.size())) == lowerCaseWord;
}

ConfigScanner::Step ConfigScanner::StoreAndContinueAt(std::size_t position) {
    pendingKey_.clear();
    position_ = position;
    return Step::Continue;
}

}  // namespace sealkeeper
