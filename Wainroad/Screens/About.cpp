#include "Wainroad/Screens/About.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Dialogs.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/QuickDraw/Fonts.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Screens/ModalDialogs.h"

#include <algorithm>
#include <vector>

namespace Wainroad {

MachineFacts gMachineFacts;

namespace {

enum AboutItems : Int { kOK = 1, kVersion = 2, kPaneItem = 6, kPaneFrame = 7, kCaption = 8, kCaptionKey = 9 };
constexpr Int kFirstHidden = 15, kLastHidden = 20;
constexpr Int kDialog = 2001, kTexts = 3000, kCreditsCaption = 25, kSystemCaption = 26;
constexpr Int kMachines = 2000, kProcessors = 2001, kCredits = 2003, kSystemLabels = 2004;
constexpr Int kDoubleClickTicks = 30, kFlashTicks = 10;
constexpr Int kKilobytes = 4096, kFreeKilobytes = 1000;

struct AboutState {
    bool showSystem = false;
};
RunState<AboutState> sAbout;
const AtRunStart sFreshStart([] { gMachineFacts = {}; });

/// Height of a line of the pane's font, ascent and leading alone.
Int paneLine(const FontInfo& font) { return font.ascent + font.leading; }

// ---- Credits

std::vector<Str255> credits()
{
    std::vector<Str255> all;
    for (Int index = 1;; ++index) {
        const Str255 name = ListString(kCredits, index);
        if (name.size() < 2)
            return all;
        all.push_back(name);
    }
}

void drawParagraph(const std::vector<Str255>& names, const Rect& pane)
{
    Bytes text;
    for (const Str255& name : names) {
        if (!text.empty())
            text.insert(text.end(), {',', ' '});
        const auto letters = characters(name);
        text.insert(text.end(), letters.begin(), letters.end());
    }
    TextBox(text, I(text.size()), pane, 0);
}

/// The baseline of row `row` of `rows` that are spread evenly down the pane.
Int spreadBaseline(const Rect& pane, const FontInfo& font, Int row, Int rows)
{
    const Int free = std::max<Int>(pane.height() - rows * paneLine(font), 0);
    return pane.top + font.ascent + row * paneLine(font) + free * (row + 1) / (rows + 1);
}

void drawTwoColumns(const std::vector<Str255>& names, const Rect& pane, const FontInfo& font)
{
    const Int rows = (I(names.size()) + 1) / 2;
    Int widest = 0;
    for (Int i = 0; i < rows; ++i)
        widest = std::max(widest, StringWidth(names[static_cast<std::size_t>(i)]));
    for (Int i = 0; i < I(names.size()); ++i) {
        MoveTo(i < rows ? 0 : widest + 15, spreadBaseline(pane, font, i % rows, rows));
        DrawString(names[static_cast<std::size_t>(i)]);
    }
}

void drawOneColumn(const std::vector<Str255>& names, const Rect& pane, const FontInfo& font)
{
    for (Int i = 0; i < I(names.size()); ++i) {
        const Str255& name = names[static_cast<std::size_t>(i)];
        MoveTo((pane.width() - StringWidth(name)) / 2, spreadBaseline(pane, font, i, I(names.size())));
        DrawString(name);
    }
}

void drawCredits(const Rect& pane)
{
    const std::vector<Str255> names = credits();
    FontInfo font;
    GetFontInfo(font);
    if (names.size() > 14)
        drawParagraph(names, pane);
    else if (names.size() >= 8)
        drawTwoColumns(names, pane, font);
    else
        drawOneColumn(names, pane, font);
}

// ---- The machine

/// The name of a kind, or the first name and the number if the kind has none.
Str255 kindOrNumber(Int list, Int kind)
{
    Str255 name = ListString(list, kind + 1);
    if (name.size() > 1)
        return name;
    name = ListString(list, 1);
    PStrAppend(name, pstr(std::to_string(kind)));
    return name;
}

Str255 systemVersion()
{
    const Int version = gMachineFacts.systemVersion;
    std::string text = std::to_string(version >> 8 & 0xFF) + "." + std::to_string(version >> 4 & 0xF);
    if ((version & 0xF) != 0)
        text += "." + std::to_string(version & 0xF);
    return pstr(text);
}

Str255 kilobytes(Int n)
{
    Str255 text;
    NumToCommas(n, text);
    PStrAppend(text, pstr("K"));
    return text;
}

void drawSystemInfo(const Rect& pane)
{
    const std::array<Str255, 7> values{kindOrNumber(kMachines, gMachineFacts.machine),
        kindOrNumber(kProcessors, gMachineFacts.processor), systemVersion(),
        pstr(std::to_string(gMachineFacts.networkVersion)), kilobytes(kFreeKilobytes), kilobytes(kKilobytes),
        kilobytes(kKilobytes)};
    FontInfo font;
    GetFontInfo(font);
    const Int centre = pane.width() / 2;
    for (Int row = 0; row < I(values.size()); ++row) {
        const Str255 label = ListString(kSystemLabels, row + 1);
        const Int baseline = spreadBaseline(pane, font, row, I(values.size()));
        MoveTo(centre - 2 - StringWidth(label), baseline);
        DrawString(label);
        MoveTo(centre + (row < 2 ? 2 : 0), baseline);
        DrawString(values[static_cast<std::size_t>(row)]);
    }
}

// ---- The box

/// Sets the caption and fits its item to it.
void setCaption(const DialogPtr& dialog)
{
    const Str255 caption = ListString(kTexts, sAbout->showSystem ? kSystemCaption : kCreditsCaption);
    if (DItem* item = dialog->item(kCaption)) {
        item->rect.right = item->rect.left + StringWidth(caption) + 4;
        EraseRect(item->rect);
    }
    SetDialogText(dialog, kCaption, caption);
}

void drawPane(const DialogPtr& dialog)
{
    if (const DItem* caption = dialog->item(kCaption))
        EraseRect(caption->rect); // the frame is whole again where a longer caption was
    if (const DItem* frame = dialog->item(kPaneFrame)) {
        PenPat(qd.gray);
        FrameRect(frame->rect);
        PenNormal();
    }
    setCaption(dialog);
    const DItem* item = dialog->item(kPaneItem);
    if (!item)
        return;
    const Rect place = item->rect, pane = place.offsetBy(-place.left, -place.top);
    const Int font = thePort->txFont, size = thePort->txSize;
    SetOrigin(-place.left, -place.top);
    {
        const ClipScope clip(pane);
        TextFont(geneva);
        TextSize(9);
        EraseRect(pane);
        if (sAbout->showSystem)
            drawSystemInfo(pane);
        else
            drawCredits(pane);
        TextFont(font);
        TextSize(size);
    }
    SetOrigin(0, 0);
}

void drawAbout(const DialogPtr& dialog)
{
    const PortScope port(dialog->port);
    if (const DItem* ok = dialog->item(kOK)) {
        const Rect ring = ok->rect.insetBy(-4, -4);
        PenSize(3, 3);
        FrameRoundRect(ring, 16, 16);
        PenNormal();
    }
    drawPane(dialog);
    DrawDialog(dialog);
}

bool aboutFilter(const DialogPtr& dialog, EventRecord& event, Int& item)
{
    if (event.what == updateEvt && event.window() == dialog) {
        BeginUpdate(dialog);
        drawAbout(dialog);
        EndUpdate(dialog);
        return false;
    }
    const Int character = event.message & charCodeMask;
    if (event.what != keyDown || (character != 13 && character != 3))
        return false;
    item = kOK;
    Int now = 0;
    HiliteDialogButton(dialog, kOK, 10);
    Delay(kFlashTicks, now);
    HiliteDialogButton(dialog, kOK, 0);
    return true;
}

/// Two hits within half a second turn from the credits to the machine and back.
void hitCaption(const DialogPtr& dialog, Int& lastHit)
{
    if (lastHit != 0 && TickCount() - lastHit <= kDoubleClickTicks) {
        sAbout->showSystem = !sAbout->showSystem;
        const PortScope port(dialog->port);
        drawPane(dialog);
        lastHit = 0;
    } else {
        lastHit = TickCount();
    }
}

} // namespace

Str255 GetVersion()
{
    const Handle version = Get1Resource(os("vers"), 1);
    if (!version || version->count() < 7)
        Fatal(ResError(), "GetVersNumber");
    return version->pstr(6);
}

void About()
{
    sAbout->showSystem = false;
    const DialogPtr dialog = GetNewDialog(kDialog);
    if (!dialog)
        return;
    Rect place = dialog->portRect();
    CenterRect(place);
    MoveWindow(dialog, place.left, place.top, false);
    for (Int item = kFirstHidden; item <= kLastHidden; ++item)
        HideDItem(dialog, item);
    SetDialogText(dialog, kVersion, GetVersion());
    ShowWindow(dialog);
    SelectWindow(dialog);
    Int hit = 0, lastHit = 0;
    while (hit != kOK && !Input::quitRequested) {
        ModalDialog(aboutFilter, hit);
        if (hit == kCaptionKey)
            hitCaption(dialog, lastHit);
    }
    CloseModalDialog(dialog);
}

} // namespace Wainroad
