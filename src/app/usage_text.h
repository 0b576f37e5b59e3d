// The usage and help texts.
#ifndef SEALKEEPER_APP_USAGE_TEXT_H
#define SEALKEEPER_APP_USAGE_TEXT_H

namespace sealkeeper {

enum class HelpText { Omitted, Included };

// Writes the usage text and, if `help` says so, the help text after it. Neither has a tag.
void PrintUsage(HelpText help);

}  // namespace sealkeeper

#endif
