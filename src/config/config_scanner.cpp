#include "config/config_scanner.h"

#include <utility>

#include "platform/ascii_case.h"

namespace sealkeeper {
namespace {

constexpr std::string_view kSkippedBytes = " \t\r;";
constexpr std::string_view kNameEnd = " \t\n\r:";
constexpr std::string_view kKeyEnd = " \t\n\r=";
constexpr std::size_t kNotFound = std::string_view::npos;

}  // namespace

bool ConfigScanner::Scan() {
    Step step = Step::Continue;
    while (step == Step::Continue) {
        step = ScanToken();
    }
    RecordEnd();
    return step != Step::Fail;
}

ConfigScanner::Step ConfigScanner::ScanToken() {
    position_ = text_.find_first_not_of(kSkippedBytes, position_);
    // Deliberate quirk: the last byte of the text never starts a token.
    if (position_ == kNotFound || position_ >= text_.size() - 1) {
        return Step::Stop;
    }
    if (TakeCommentMarker()) {
        return Step::Continue;
    }
    const char current = text_[position_];
    if (current == '\n') {
        if (inComment_ && !inBlockComment_) {
            RecordCommentEnd(position_);
        }
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
        if (outline_ != nullptr) {
            outline_->sections.back().closingBrace = position_;
        }
        ++position_;
        return Step::Continue;
    }
    return pendingKey_.empty() ? TakeKey() : TakeValue();
}

// Markers count inside comments as well: a "/*" in a line comment opens a block comment.
bool ConfigScanner::TakeCommentMarker() {
    if (text_[position_] == '#') {
        RecordCommentMarker(CommentKind::Line);
        inComment_ = true;
        ++position_;
        return true;
    }
    if (StartsWith("//")) {
        RecordCommentMarker(CommentKind::Line);
        inComment_ = true;
    } else if (StartsWith("/*")) {
        RecordCommentMarker(CommentKind::Block);
        inBlockComment_ = true;
        inComment_ = true;
    } else if (inBlockComment_ && StartsWith("*/")) {
        RecordCommentEnd(position_ + 2);
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
        return StopAt(position_, ConfigStop::ColonForSectionName);
    }
    const std::size_t nameEnd = text_.find_first_of(kNameEnd, position_ + 1);
    if (nameEnd == kNotFound) {
        return StopAt(position_, ConfigStop::UnendedSectionName);
    }
    const std::string name = LowerCasedAscii(text_.substr(position_, nameEnd - position_));
    ConfigSection& section = document_.OpenSection(name);
    const std::size_t brace = text_.find('{', nameEnd + 1);
    if (brace == kNotFound) {
        return StopAt(position_, ConfigStop::NoOpeningBrace);
    }
    if (outline_ != nullptr) {
        outline_->sections.push_back({name, position_, brace, kNoOffset});
    }
    section_ = &section;
    position_ = brace + 1;
    return Step::Continue;
}

ConfigScanner::Step ConfigScanner::TakeKey() {
    if (text_[position_] == '=') {
        return StopAt(position_, ConfigStop::EqualsSignForKey);
    }
    const std::size_t keyEnd = text_.find_first_of(kKeyEnd, position_ + 1);
    if (keyEnd == kNotFound) {
        return StopAt(position_, ConfigStop::UnendedKey);
    }
    pendingKey_ = LowerCasedAscii(text_.substr(position_, keyEnd - position_));
    if (outline_ != nullptr) {
        outline_->keys.push_back({pendingKey_, position_, outline_->sections.size() - 1});
    }
    const std::size_t value = text_.find_first_not_of(kKeyEnd, keyEnd);
    if (value == kNotFound) {
        return StopAt(position_, ConfigStop::NoValue);
    }
    position_ = value;
    return Step::Continue;
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
    if (end == kNotFound) {
        return StopAt(position_, ConfigStop::NoClosingBracket);
    }
    if (end == begin) {
        return StopAt(position_, ConfigStop::EmptyBrackets);
    }
    const auto elements = FindListElements(text_.substr(begin, end - begin));
    if (!elements) {
        static_cast<void>(StopAt(position_, ConfigStop::LineFeedInElement));
        return Step::Fail;
    }
    StringList& list = section.stringLists.Get(pendingKey_);
    for (const std::string_view element : *elements) {
        list.push_back(UnescapeBackslashes(std::string(element)));
    }
    RecordValue(ConfigValueKind::List, end + 1, *elements, 0);
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakePairTable(ConfigSection& section) {
    const std::size_t begin = position_ + 1;
    const std::size_t end = text_.find(')', begin);
    if (end == kNotFound) {
        return StopAt(position_, ConfigStop::NoClosingParenthesis);
    }
    if (end == begin) {
        return StopAt(position_, ConfigStop::EmptyParentheses);
    }
    const QuotedTexts texts = FindPairs(text_.substr(begin, end - begin));
    StringPairs& pairs = section.stringPairTables.Get(pendingKey_);
    for (std::size_t i = 0; i < texts.size(); i += 2) {
        // A name that occurs again keeps its first value.
        pairs.emplace(UnescapeBackslashes(std::string(texts[i])),
                      UnescapeBackslashes(std::string(texts[i + 1])));
    }
    RecordValue(ConfigValueKind::PairTable, end + 1, texts, 0);
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakeString(ConfigSection& section) {
    const std::size_t begin = position_ + 1;
    const std::size_t end = text_.find('"', begin);
    if (end == kNotFound) {
        return StopAt(position_, ConfigStop::NoClosingQuote);
    }
    const std::string_view quoted = text_.substr(begin, end - begin);
    section.strings.Get(pendingKey_) = UnescapeBackslashes(std::string(quoted));
    RecordValue(ConfigValueKind::String, end + 1, {quoted}, 0);
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakeNumber(ConfigSection& section) {
    section.flags.Get(pendingKey_) = text_[position_] != '0';
    const std::size_t end = text_.find(';', position_);
    if (end == kNotFound) {
        return StopAt(position_, ConfigStop::NoSemicolon);
    }
    const std::int64_t number = ParseNumber(text_.substr(position_, end - position_));
    section.integers.Get(pendingKey_) = number;
    RecordValue(ConfigValueKind::Number, end + 1, {}, number);
    return StoreAndContinueAt(end + 1);
}

ConfigScanner::Step ConfigScanner::TakeWord(ConfigSection& section) {
    constexpr std::string_view kTrue = "true";
    constexpr std::string_view kFalse = "false";
    for (const std::string_view word : {kTrue, kFalse}) {
        if (EqualsIgnoringCase(word)) {
            const bool flag = word == kTrue;
            section.flags.Get(pendingKey_) = flag;
            const std::size_t end = position_ + word.size();
            RecordValue(ConfigValueKind::Flag, end, {}, flag ? 1 : 0);
            // Deliberate quirk: the byte after the word is skipped unseen, even a closing brace.
            return StoreAndContinueAt(end + 1);
        }
    }
    return StopAt(position_, ConfigStop::UnknownWord);
}

bool ConfigScanner::StartsWith(std::string_view marker) const {
    return text_.substr(position_, marker.size()) == marker;
}

bool ConfigScanner::EqualsIgnoringCase(std::string_view lowerCaseWord) const {
    return LowerCasedAscii(text_.substr(position_, lowerCaseWord.size())) == lowerCaseWord;
}

ConfigScanner::Step ConfigScanner::StoreAndContinueAt(std::size_t position) {
    pendingKey_.clear();
    position_ = position;
    return Step::Continue;
}

ConfigScanner::Step ConfigScanner::StopAt(std::size_t position, ConfigStop why) {
    if (outline_ != nullptr) {
        outline_->stop = {why, position};
    }
    return Step::Stop;
}

void ConfigScanner::RecordCommentMarker(CommentKind kind) {
    if (outline_ == nullptr) {
        return;
    }
    if (!inComment_) {
        outline_->comments.emplace_back().begin = position_;
    }
    OutlinedComment& comment = outline_->comments.back();
    if (kind == CommentKind::Line) {
        return;
    }
    if (inBlockComment_) {
        comment.innerBlocks.push_back(position_);
    } else {
        comment.block = position_;
    }
}

void ConfigScanner::RecordCommentEnd(std::size_t end) {
    if (outline_ != nullptr) {
        outline_->comments.back().end = end;
        outline_->comments.back().isClosed = true;
    }
}

void ConfigScanner::RecordValue(ConfigValueKind kind, std::size_t end, const QuotedTexts& texts,
                                std::int64_t number) {
    if (outline_ == nullptr) {
        return;
    }
    OutlinedValue value;
    value.kind = kind;
    value.section = outline_->sections.size() - 1;
    // A key that waits for its value is always the last key.
    value.key = outline_->keys.size() - 1;
    value.begin = position_;
    value.end = end;
    for (const std::string_view text : texts) {
        const auto begin = static_cast<std::size_t>(text.data() - text_.data());
        value.texts.push_back({begin, begin + text.size(), UnescapeBackslashes(std::string(text))});
    }
    value.number = number;
    outline_->values.push_back(std::move(value));
}

void ConfigScanner::RecordEnd() {
    if (outline_ == nullptr) {
        return;
    }
    if (inComment_) {
        outline_->comments.back().end = text_.size();
    }
    if (section_ != nullptr) {
        outline_->openSection = outline_->sections.size() - 1;
    }
    if (!pendingKey_.empty()) {
        outline_->pendingKey = outline_->keys.size() - 1;
    }
}

}  // namespace sealkeeper
