// The scan of the configuration text: one forward pass without backtracking. Its leniency is part
// of the format: most errors end the scan and keep what was read so far.
#ifndef SEALKEEPER_CONFIG_CONFIG_SCANNER_H
#define SEALKEEPER_CONFIG_CONFIG_SCANNER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "config/config_document.h"
#include "config/config_outline.h"
#include "config/config_values.h"

namespace sealkeeper {

class ConfigScanner {
  public:
    // All must outlive the scanner. `text` must not be empty; `outline`, if given, must be.
    ConfigScanner(std::string_view text, ConfigDocument& document, ConfigOutline* outline = nullptr)
        : text_(text), document_(document), outline_(outline) {}

    // Scans the text into the document and, if there is one, the outline. False only for a string
    // list element with a line feed.
    [[nodiscard]] bool Scan();

  private:
    enum class Step { Continue, Stop, Fail };
    enum class CommentKind { Line, Block };

    [[nodiscard]] Step ScanToken();
    [[nodiscard]] bool TakeCommentMarker();
    [[nodiscard]] Step TakeSectionHeader();
    [[nodiscard]] Step TakeKey();
    [[nodiscard]] Step TakeValue();
    [[nodiscard]] Step TakeStringList(ConfigSection& section);
    [[nodiscard]] Step TakePairTable(ConfigSection& section);
    [[nodiscard]] Step TakeString(ConfigSection& section);
    [[nodiscard]] Step TakeNumber(ConfigSection& section);
    [[nodiscard]] Step TakeWord(ConfigSection& section);

    [[nodiscard]] bool StartsWith(std::string_view marker) const;
    [[nodiscard]] bool EqualsIgnoringCase(std::string_view lowerCaseWord) const;
    [[nodiscard]] Step StoreAndContinueAt(std::size_t position);
    [[nodiscard]] Step StopAt(std::size_t position, ConfigStop why);

    // These fill the outline. Without one they do nothing.
    void RecordCommentMarker(CommentKind kind);
    void RecordCommentEnd(std::size_t end);
    void RecordValue(ConfigValueKind kind, std::size_t end, const QuotedTexts& texts,
                     std::int64_t number);
    void RecordEnd();

    std::string_view text_;
    ConfigDocument& document_;
    ConfigOutline* outline_;
    std::size_t position_ = 0;
    // Null while no section is open.
    ConfigSection* section_ = nullptr;
    // Empty while no key waits for its value.
    std::string pendingKey_;
    bool inComment_ = false;
    bool inBlockComment_ = false;
};

}  // namespace sealkeeper

#endif
