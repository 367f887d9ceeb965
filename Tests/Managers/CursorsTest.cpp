#include "MacToolbox/Managers/Cursors.h"

#include "MacToolbox/Base/HeadlessPlatform.h"
#include "MacToolbox/Base/RunState.h"

#include <gtest/gtest.h>

#include <vector>

using namespace MacToolbox;

namespace {

/// Notes what it is told.
class CursorPlatform final : public HeadlessPlatform {
public:
    CursorPlatform() { Platform::install(this); }
    ~CursorPlatform() override { Platform::install(nullptr); }
    void cursorChanged(const Cursor* cursor) override { told.push_back(cursor ? cursor->hotSpot.h : -1); }

    std::vector<Int> told;
};

} // namespace

TEST(Cursors, TheHostHearsOfChangesAlone)
{
    startRunAfresh();
    CursorPlatform platform;
    Cursor beam, cross;
    beam.hotSpot.h = 4;
    cross.hotSpot.h = 8;
    InitCursor();
    InitCursor();
    SetCursor(beam);
    SetCursor(beam);
    SetCursor(std::make_shared<Cursor>(cross));
    SetCursor(CursHandle());
    InitCursor();
    EXPECT_EQ(platform.told, (std::vector<Int>{-1, 4, 8, -1}));
    EXPECT_EQ(Cursors::requested(), std::nullopt);
    EXPECT_EQ(Cursors::changes(), 4);
    EXPECT_EQ(GetCursor(watchCursor), nullptr) << "no resource file is open";
}
