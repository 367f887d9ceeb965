#include "Tools/rsrc/Check.h"
#include "Tools/rsrc/Expectations.h"
#include "Tools/rsrc/Forms.h"

#include <algorithm>

namespace Rsrc {

namespace {

constexpr Int kGameFamily = 6322, kGuidePanel = 6020, kGuideText = 5, kTitleMargin = 8;

/// A strike in a style, as a text is set.
struct Face {
    Strike strike;
    bool bold = false;

    Int lineHeight() const { return strike.ascent + strike.descent + strike.leading; }
    Int width(std::span<const std::uint8_t> text) const { return strike.width(text, bold); }
};

/// The face in which a panel sets its static texts.
Face panelFace(const Stock& stock, Int panel)
{
    constexpr Int kSmall[] = {5600, 6080, 6183, 6310, 6330, 9030}, kSmallBold[] = {6040, 6060, 8075, 9021};
    const bool small = std::find(std::begin(kSmall), std::end(kSmall), panel) != std::end(kSmall);
    const bool smallBold = std::find(std::begin(kSmallBold), std::end(kSmallBold), panel) != std::end(kSmallBold);
    const bool plain = small || panel == 6090 || panel == 6170;
    return {plainStrike(stock, kGameFamily, small || smallBold ? 12 : 14).value_or(Strike{}), !plain};
}

/// Lines of a text that is broken between words, and at every 13. A word wider than the line is broken within.
Int linesOf(const Bytes& text, const Face& face, Int width)
{
    Int lines = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = start, breakAt = start;
        while (end < text.size() && text[end] != '\r'
            && face.width(std::span(text).subspan(start, end + 1 - start)) <= width) {
            ++end;
            if (text[end - 1] == ' ')
                breakAt = end;
        }
        const bool whole = end == text.size() || text[end] == '\r';
        if (whole)
            start = end + (end < text.size() ? 1 : 0);
        else
            start = breakAt > start ? breakAt : std::max(end, start + 1);
        ++lines;
    }
    return lines;
}

void checkTextFits(const char* type, Int id, const std::string& what, const Bytes& text, const Rect& rect,
    const Face& face, Findings& findings)
{
    if (face.lineHeight() <= 0)
        return;
    const Int lines = linesOf(text, face, rect.width()), room = rect.height() / face.lineHeight();
    if (lines > room)
        findings.note(
            type, id, what + " has " + std::to_string(lines) + " lines; there is room for " + std::to_string(room));
}

void checkItemTexts(Int id, const Bytes& data, const Face& texts, const Face& titles, Findings& findings)
{
    const auto items = itemsOf(data).value_or(std::vector<Item>{});
    for (std::size_t i = 0; i < items.size(); ++i) {
        const Item& item = items[i];
        const std::string what = "item " + std::to_string(i + 1);
        const bool filledLater = std::find(item.data.begin(), item.data.end(), '^') != item.data.end();
        if ((item.type & 127) == 8 && !filledLater)
            checkTextFits("DITL", id, what, item.data, item.rect, texts, findings);
        if (item.type == 4 && titles.width(item.data) + kTitleMargin > item.rect.width())
            findings.note("DITL", id, "the title of " + what + " is too wide for its button");
    }
}

} // namespace

void checkFit(const Stock& stock, Findings& findings)
{
    const Face system{plainStrike(stock, 0, 12).value_or(Strike{}), false};
    for (const PanelNeeds& need : panelNeeds())
        if (const Bytes* data = stock.find("DITL", need.id))
            checkItemTexts(need.id, *data, panelFace(stock, need.id), system, findings);
    for (const DialogNeeds& need : dialogNeeds())
        if (const Bytes* data = stock.find("DITL", need.id))
            checkItemTexts(need.id, *data, system, system, findings);
    const Bytes* guide = stock.find("DITL", kGuidePanel);
    const auto items = guide ? itemsOf(*guide) : std::nullopt;
    if (!items || I(items->size()) < kGuideText)
        return;
    const Face face{plainStrike(stock, kGameFamily, 12).value_or(Strike{}), false};
    for (const Int id : stock.ids("WST#")) {
        const auto pages = guideStringsOf(*stock.find("WST#", id)).value_or(std::vector<Bytes>{});
        for (std::size_t i = 0; i < pages.size(); ++i)
            checkTextFits(
                "WST#", id, "page " + std::to_string(i + 1), pages[i], (*items)[kGuideText - 1].rect, face, findings);
    }
}

} // namespace Rsrc
