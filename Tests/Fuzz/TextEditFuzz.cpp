// Keys into a TextEdit record; two bytes in a row of 0xFF set the next three numbers as width and selection.

#include "MacToolbox/Managers/TextEdit.h"
#include "MacToolbox/Managers/Windows.h"
#include "Tests/Fuzz/ToolboxMachine.h"

using namespace MacToolbox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ToolboxMachine machine(os("none"), 200, {});
    const WindowPtr w = NewWindow(nullptr, {40, 40, 300, 460}, {0}, true, plainDBoxProc, nullptr, false, 0);
    const PortScope scope(w->port);
    const TEHandle te = TENew({10, 10, 80, 70}, {10, 10, 80, 70});
    TEActivate(te);
    TEAutoView(size % 2 == 0, te);
    const auto whole = [&] {
        require(te->selStart >= 0 && te->selStart <= te->selEnd && te->selEnd <= te->teLength());
        require(te->lineStarts.size() >= 2 && te->lineStarts.front() == 0 && te->lineStarts.back() == te->teLength());
        require(std::is_sorted(te->lineStarts.begin(), te->lineStarts.end()));
    };
    for (std::size_t i = 0; i < std::min<std::size_t>(size, 2048); ++i) {
        if (data[i] == 0xFF && i + 4 < size && data[i + 1] == 0xFF) {
            te->destRect.right = te->destRect.left + data[i + 2];
            TECalText(te);
            TESetSelect(data[i + 3], data[i + 4], te);
            i += 4;
        } else {
            TEKey(data[i], te);
        }
        whole();
    }
    for (Int at = 0; at <= te->teLength(); ++at) {
        const TERec::Place p = te->pointOf(at);
        require(te->offsetAt({p.top + 1, p.h}) <= te->teLength());
    }
    return 0;
}
