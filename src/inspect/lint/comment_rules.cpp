// Comments that hide more, or less, than they seem to.
#include <cstddef>
#include <string>

#include "inspect/lint/lint_rules.h"
#include "inspect/lint/shown_text.h"

namespace sealkeeper {
namespace {

constexpr const char* kBlockCure = "Write the '/*' in this comment with a blank between its signs.";

bool StartsComment(std::string_view text) {
    return text.starts_with('#') || text.starts_with("//") || text.starts_with("/*");
}

// A block comment inside a line comment may end on the same line. What follows it is read.
void LintTextAfterBlock(const LintedText& linted, const OutlinedComment& comment,
                        LintFindings& findings) {
    const std::string_view rest =
        WithoutLeadingBlanks(linted.Part(comment.end, linted.LineEnd(comment.end)));
    if (!rest.empty() && !StartsComment(rest)) {
        findings.AddMisread(
            comment.end - 2,
            "The '*/' ends this line comment, so what follows it on the line is read.",
            "Remove the '*/', or what follows it.");
    }
}

void LintBlockInLineComment(const LintedText& linted, const OutlinedComment& comment,
                            LintFindings& findings) {
    const std::size_t lineEnd = linted.LineEnd(comment.block);
    if (comment.isClosed) {
        if (comment.end > lineEnd) {
            findings.Add(
                comment.block,
                "The '/*' in this line comment opens a block comment, which hides all up to the '*/' on " +
                    linted.LineName(comment.end - 1) + ".",
                kBlockCure);
        }
        LintTextAfterBlock(linted, comment, findings);
    } else if (!IsBlank(linted.Part(lineEnd, comment.end))) {
        findings.Add(
            comment.block,
            "The '/*' in this line comment opens a block comment without an end, so everything from " +
                linted.LineName(lineEnd + 1) + " on is ignored.",
            kBlockCure);
    }
}

void LintOpenBlock(const LintedText& linted, const OutlinedComment& comment,
                   LintFindings& findings) {
    if (!comment.isClosed) {
        findings.Add(comment.begin,
                     "The comment that begins here has no end, so everything from " +
                         linted.LineName(comment.begin) + " on is ignored.",
                     "Write '*/' at its end.");
    }
}

// "/*/" inside a block comment looks like its end, but is not.
void LintSharedStars(const LintedText& linted, const OutlinedComment& comment,
                     LintFindings& findings) {
    for (const std::size_t inner : comment.innerBlocks) {
        const bool isShared = linted.Text().substr(inner).starts_with("/*/");
        if (isShared && linted.LineEnd(inner) < comment.end) {
            findings.Add(
                inner + 1,
                "This '*/' does not end the comment, since its star belongs to the '/*' before it.",
                "Write a blank before the '*/'.");
        }
    }
}

void LintCarriageReturn(const LintedText& linted, const OutlinedComment& comment,
                        LintFindings& findings) {
    const std::string_view text = linted.Part(comment.begin, comment.end);
    const std::size_t found = text.find('\r');
    if (found != std::string_view::npos && !IsBlank(text.substr(found))) {
        findings.Add(
            comment.begin + found,
            "A carriage return alone ends no line, so what follows it is still part of the comment.",
            "Save the file with line feeds at the ends of its lines.");
    }
}

}  // namespace

void LintComments(const LintedText& linted, LintFindings& findings) {
    for (const OutlinedComment& comment : linted.Outline().comments) {
        if (comment.block == kNoOffset) {
            LintCarriageReturn(linted, comment, findings);
        } else if (comment.block == comment.begin) {
            LintOpenBlock(linted, comment, findings);
        } else {
            LintBlockInLineComment(linted, comment, findings);
        }
        LintSharedStars(linted, comment, findings);
    }
}

}  // namespace sealkeeper
