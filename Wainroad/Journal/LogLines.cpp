#include "Wainroad/Journal/LogLines.h"

#include "MacToolbox/QuickDraw/Fonts.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Wording.h"

#include <algorithm>

namespace Wainroad {

namespace {

constexpr std::uint8_t kReturn = 13, kEllipsis = 201;
constexpr Int kMargin = 6;  // pixels of the view that no line uses
constexpr Int kIndent = 15; // pixels that the later lines of a message are narrower

bool isDate(Int offset)
{
    const auto message = MessageAt(offset);
    return !message.empty() && message[0] == kLogDate;
}

/// The widths of a text: before each character, from index 1 on.
class TextWidths {
public:
    explicit TextWidths(const Str255& text) { MeasureText(I(text.size()) - 1, text, 1, locs_); }

    /// Pixels before the character at `index`, 1 to length + 1.
    Int before(Int index) const
    {
        return locs_[static_cast<std::size_t>(std::clamp<Int>(index - 1, 0, I(locs_.size()) - 1))];
    }

private:
    std::vector<Int> locs_;
};

/// Where the line that begins at `start` ends: behind the last blank that fits, or behind a return.
Int endOfLine(const Str255& text, const TextWidths& widths, Int start, Int limit)
{
    const Int length = I(text.size()) - 1;
    const auto at = [&](Int i) { return text[static_cast<std::size_t>(i)]; };
    Int pos = start;
    while (pos <= length && widths.before(pos) < limit && at(pos) != kReturn)
        ++pos;
    if (pos > length)
        return pos;
    if (at(pos) == kReturn)
        return pos + 1;
    Int blank = pos;
    while (blank > start && at(blank) != ' ')
        --blank;
    return blank > start ? blank + 1 : std::max(pos, start + 1); // a word wider than the line is split
}

/// Cuts a text that passes the limit of its last line. @return Its new end.
Int cutWithEllipsis(Str255& text, const TextWidths& widths, Int start, Int limit)
{
    Int last = I(text.size()) - 1;
    while (last > start && widths.before(last) >= limit)
        --last;
    text.resize(static_cast<std::size_t>(std::max(last - 3, start) + 1));
    text.push_back(kEllipsis);
    text[0] = static_cast<std::uint8_t>(text.size() - 1);
    return I(text.size());
}

} // namespace

void WrapLogLine(View& item, LogLine& line)
{
    TextStyleRec face = item.style;
    face.face = line.face;
    const StyleScope style(face);
    const TextWidths widths(line.text);
    const Int width = item.r.width() - kMargin;
    const Int length = line.text[0];
    Int pos = 1, limit = width, lines = 0;
    line.lineStart[0] = 1;
    while (lines < kLogMessageLines && pos <= length) {
        const Int start = pos;
        pos = endOfLine(line.text, widths, start, limit);
        if (lines == kLogMessageLines - 1 && widths.before(length + 1) > limit)
            pos = cutWithEllipsis(line.text, widths, start, limit);
        line.lineStart[static_cast<std::size_t>(++lines)] = pos;
        limit = widths.before(pos) + width - kIndent;
    }
    line.nLines = lines;
}

void LogLayout::emit(Int index, Int offset, const std::function<void(LogLine)>& shown)
{
    const auto message = MessageAt(offset);
    LogLine line;
    line.index = index;
    line.firstLine = line_;
    line.offset = offset;
    line.text = MessageText(message);
    line.face = MessageFace(message);
    WrapLogLine(item_, line);
    line_ += line.nLines;
    shown(std::move(line));
}

Int LogLayout::add(Int index, Int offset, const std::function<void(LogLine)>& shown)
{
    if (isDate(offset)) {
        date = {index, offset};
        return line_;
    }
    if (IsHidden(offset))
        return line_;
    if (date.index >= 0) {
        emit(date.index, date.offset, shown);
        date = {};
    }
    const Int begin = line_;
    emit(index, offset, shown);
    return begin;
}

} // namespace Wainroad
