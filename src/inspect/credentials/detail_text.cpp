#include "inspect/credentials/detail_text.h"

#include "inspect/report/number_text.h"

namespace sealkeeper {

std::string KeyText(const KeyDetails& key) {
    return key.type + ", " + std::to_string(key.bits) + " bits";
}

std::string DaysLeftText(UtcTime end, UtcTime now) {
    const bool isPast = IsPast(end, now);
    const auto whole =
        std::chrono::floor<std::chrono::days>(isPast ? now - end : end - now).count();
    const std::string days =
        whole == 0 ? "less than a day" : CountText(static_cast<std::uint64_t>(whole), "day");
    return isPast ? "ended " + days + " ago" : days + " left";
}

std::string SpanText(UtcTime from, UtcTime to, UtcTime now) {
    return TimeText(from) + " to " + TimeText(to) + ", " +
           (from > now ? "not begun" : DaysLeftText(to, now));
}

std::string ListSpanText(const ListDetails& list, UtcTime now) {
    return list.nextUpdate ? SpanText(list.thisUpdate, *list.nextUpdate, now)
                           : TimeText(list.thisUpdate) + ", without a next update";
}

std::string RevokedText(const ListDetails& list) {
    constexpr std::size_t kMostShown = 8;
    std::string text = CountText(list.revoked.size(), "serial");
    for (std::size_t index = 0; index < list.revoked.size() && index < kMostShown; ++index) {
        text += (index == 0 ? ": " : ", ") + list.revoked[index].serial;
    }
    return list.revoked.size() > kMostShown ? text + ", ..." : text;
}

}  // namespace sealkeeper
