#include "Wainroad/Frame/Utils.h"

#include "MacToolbox/Data/Resources.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/Windows.h"
#include "MacToolbox/QuickDraw/Screen.h"
#include "Wainroad/Frame/Panels.h"

#include <algorithm>
#include <string>

namespace Wainroad {

static constexpr Rect kBelowMenuBar{20, 0, 342, 512};

Str255 PStrOf(std::span<const std::uint8_t> text)
{
    const std::size_t length = std::min<std::size_t>(text.size(), 255);
    Str255 s(length + 1);
    s[0] = static_cast<std::uint8_t>(length);
    std::copy_n(text.begin(), length, s.begin() + 1);
    return s;
}

static Str255 counted(const std::string& text)
{
    return PStrOf(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

void CenterRect(Rect& r)
{
    const Int width = r.width(), height = r.height();
    const auto put = [&](Int top, Int left) { r = {top, left, top + height, left + width}; };
    const Rect around = gWindow ? gWindow->contentRect : Screen::bounds;
    put(around.top + (around.height() - height) / 2, around.left + (around.width() - width) / 2);
    if (r.top < kBelowMenuBar.top || r.left < kBelowMenuBar.left || r.bottom > kBelowMenuBar.bottom
        || r.right > kBelowMenuBar.right)
        put((Screen::bounds.bottom - 20 - height) / 2 + 20, (Screen::bounds.right - width) / 2);
}

void PStrCopy(const Str255& src, Str255& dst) { dst = PStrOf(characters(src)); }

Int PStrPos(const Str255& needle, const Str255& haystack)
{
    const auto what = characters(needle), where = characters(haystack);
    if (what.empty())
        return -1;
    const auto at = std::search(where.begin(), where.end(), what.begin(), what.end());
    return at == where.end() ? -1 : at - where.begin();
}

void StrReplace(Str255& str, Int start, Int length, const Str255* replacement)
{
    const auto body = characters(str);
    const Int size = I(body.size());
    if (start < 0 || start > size)
        return;
    const Int end = std::clamp(start + std::max<Int>(length, 0), start, size);
    Bytes result(body.begin(), body.begin() + start);
    if (replacement) {
        const auto middle = characters(*replacement);
        result.insert(result.end(), middle.begin(), middle.end());
    }
    result.insert(result.end(), body.begin() + end, body.end());
    str = PStrOf(result);
}

void PStrAppend(Str255& str, const Str255& more) { StrReplace(str, I(characters(str).size()), 0, &more); }

void NumToCommas(Int n, Str255& out)
{
    std::string digits = std::to_string(n);
    const std::size_t first = n < 0 ? 1 : 0;
    for (std::size_t at = digits.size(); at > first + 3;)
        digits.insert(at -= 3, 1, ',');
    out = counted(digits);
}

void CentsToString(Int n, Str255& out)
{
    Str255 whole;
    NumToCommas(n / 100, whole);
    const Int cents = n % 100 < 0 ? -(n % 100) : n % 100;
    std::string text = n < 0 && n > -100 ? "-" : "";
    text += string(whole);
    text += '.';
    text += static_cast<char>('0' + cents / 10);
    text += static_cast<char>('0' + cents % 10);
    out = counted(text);
}

void ReplaceFirst(Str255& str, std::string_view mark, const Str255& words)
{
    const Int at = PStrPos(pstr(mark), str);
    if (at >= 0)
        StrReplace(str, at, I(mark.size()), words);
}

Str255 ListString(Int list, Int index)
{
    Str255 text;
    GetIndString(text, list, index);
    return text;
}

Str255 WithCommas(Int n)
{
    Str255 text;
    NumToCommas(n, text);
    return text;
}

} // namespace Wainroad
