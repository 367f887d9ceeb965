#include "Wainroad/Journal/Names.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

namespace {

constexpr Int kMoney = 7, kNothing = 8;
constexpr Int kFragments = 1500, kGoods = 3011, kTitles = 3018;
enum Fragment : Int { kOne = 6, kCountToGood = 7, kBetween = 8 };

} // namespace

void WagonName(Str255& out, Int slot)
{
    out = slot == gState.captain ? ListString(kTitles, 10) : Str255{0};
    PStrAppend(out, gState.names[static_cast<std::size_t>(slot & 31)]);
}

void AppendAmount(Str255& text, Int item, Int count)
{
    if (count == 0)
        return;
    if (text.size() > 1)
        PStrAppend(text, ListString(kFragments, kBetween));
    Str255 number;
    switch (item) {
    case kMoney:
        CentsToString(count, number);
        PStrAppend(text, pstr("$"));
        PStrAppend(text, number);
        break;
    case kNothing: PStrAppend(text, ListString(kGoods, 15)); break;
    default:
        if (count == 1) {
            PStrAppend(text, ListString(kFragments, kOne));
            PStrAppend(text, ListString(kGoods, item + 8));
            break;
        }
        NumToCommas(count, number);
        PStrAppend(text, number);
        PStrAppend(text, ListString(kFragments, kCountToGood));
        PStrAppend(text, ListString(kGoods, item + 1));
    }
}

} // namespace Wainroad
