#include "Tests/Frame/FrameFixture.h"

#include "MacToolbox/Managers/Events.h"
#include "Wainroad/Errors/Errors.h"

namespace Wainroad {

PanelLog sLog;

std::string PanelLog::take()
{
    std::string all;
    for (const std::string& word : log)
        all += (all.empty() ? "" : " ") + word;
    log.clear();
    return all;
}

Bytes frameRecord(const Rect& bounds, Int rowBytes, const Bytes& packed)
{
    return Form().u32(18 + I(packed.size())).u32(0).u16(rowBytes).rect(bounds).raw(packed).bytes;
}

static Bytes frameOf(const Art& rows)
{
    const Int height = I(rows.size()), width = rows.empty() ? 0 : I(rows[0].size());
    const Int rowBytes = (width + 15) / 16 * 2;
    Form packed;
    for (Int column = 0; column < rowBytes; ++column) {
        for (Int start = 0; start < height; start += 127) {
            const Int run = std::min<Int>(height - start, 127);
            packed.u8(run);
            for (Int row = start; row < start + run; ++row) {
                Int byte = 0;
                for (Int bit = 0; bit < 8; ++bit) {
                    const Int h = column * 8 + bit;
                    byte = byte << 1 | (h < width && rows[std::size_t(row)][std::size_t(h)] == '#');
                }
                packed.u8(byte);
            }
        }
    }
    return frameRecord({0, 0, height, width}, rowBytes, packed.bytes);
}

Bytes imag(const std::vector<Art>& frames)
{
    Form form;
    form.u16(I(frames.size()));
    for (const Art& frame : frames)
        form.raw(frameOf(frame));
    return form.bytes;
}

std::vector<std::string> art(const BitMap& map)
{
    std::vector<std::string> rows;
    for (Int v = map.bounds.top; v < map.bounds.bottom; ++v) {
        rows.emplace_back();
        for (Int h = map.bounds.left; h < map.bounds.right; ++h)
            rows.back() += map.get(h, v) ? '#' : '.';
    }
    return rows;
}

Bytes ditl(const std::vector<ItemSpec>& items)
{
    Form form;
    form.u16(I(items.size()) - 1);
    for (const ItemSpec& item : items) {
        form.u32(0).rect(item.r).u8(item.type).u8(I(item.data.size())).raw(item.data);
        if (item.data.size() % 2 != 0)
            form.u8(0);
    }
    return form.bytes;
}

Bytes cntl(Int procID, Int refCon, std::string_view title, bool visible)
{
    return Form()
        .rect({0, 0, 50, 100})
        .u16(0)
        .u8(visible)
        .u8(0)
        .u16(1)
        .u16(0)
        .u16(procID)
        .u32(refCon)
        .counted(title)
        .bytes;
}

FrameTest::FrameTest()
{
    sLog.log.clear();
    errorHooks() = {};
    const Art side{"##", "##"}, up{"#.#.", ".#.#"}, down{"####", "####"};
    add("Imag", 128, imag({side, side, side, side}));
    add("Imag", 129, imag({up, down}));
    useResources();
    gWindow = window({kTop, 0, 342, 512}, plainDBoxProc, false);
    PanelsInit();
    SetPort(gWindow);
    RootOpen(gWindow, true);
    pump(3);
}

FrameTest::~FrameTest() { RootClose(gWindow); }

void FrameTest::pump(Int passes)
{
    for (Int i = 0; i < passes; ++i) {
        EventRecord event;
        WaitNextEvent(everyEvent, event, 0, nullptr);
        RootEvent(event);
    }
}

View& FrameTest::open(const ViewProc& proc)
{
    OpenPanel(proc);
    pump(3);
    return *FindPanel(proc);
}

void FrameTest::click(Point at, Int modifiers)
{
    if (modifiers != 0)
        Input::modifiers(modifiers);
    clickLater(3, {at.v + kTop, at.h});
    do
        pump();
    while (Input::isButtonDown());
    pump(2);
    Input::modifiers(0);
}

void FrameTest::type(std::string_view text)
{
    for (const char c : text)
        press(static_cast<std::uint8_t>(c));
}

void FrameTest::press(Int character, Int modifiers)
{
    key(character, modifiers);
    Input::modifiers(0);
    pump(2);
}

std::string FrameTest::text(View& panel, Int item)
{
    Str255 s{0};
    GetItemText(panel, item, s);
    return string(s);
}

} // namespace Wainroad
