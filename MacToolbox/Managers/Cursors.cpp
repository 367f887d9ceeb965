#include "MacToolbox/Managers/Cursors.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Data/Resources.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr Int kCursorBytes = 68; // 32 of data, 32 of mask, the hot spot

struct CursorState {
    std::optional<Cursor> requested; // nothing is the arrow
    bool anyRequest = false;
    Int changes = 0;
};
RunState<CursorState> sCursors;

void request(const std::optional<Cursor>& cursor)
{
    if (sCursors->anyRequest && sCursors->requested == cursor)
        return;
    sCursors->anyRequest = true;
    sCursors->requested = cursor;
    ++sCursors->changes;
    Platform::current().cursorChanged(cursor ? &*cursor : nullptr);
}

} // namespace

const std::optional<Cursor>& Cursors::requested() { return sCursors->requested; }

Int Cursors::changes() { return sCursors->changes; }

void InitCursor() { request(std::nullopt); }

CursHandle GetCursor(Int id)
{
    const Handle resource = GetResource(os("CURS"), id);
    if (GetHandleSize(resource) < kCursorBytes)
        return nullptr;
    auto cursor = std::make_shared<Cursor>();
    std::copy_n(resource->bytes.begin(), 32, cursor->data.begin());
    std::copy_n(resource->bytes.begin() + 32, 32, cursor->mask.begin());
    cursor->hotSpot = {resource->s16(64), resource->s16(66)};
    return cursor;
}

void SetCursor(const Cursor& cursor) { request(cursor); }

void SetCursor(const CursHandle& cursor)
{
    if (cursor)
        request(*cursor);
}

void HideCursor() { Platform::current().hideCursor(); }
void ShowCursor() { Platform::current().showCursor(); }
void ObscureCursor() { Platform::current().obscureCursor(); }

} // namespace MacToolbox
