#include "Wainroad/Frame/Panels.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Items.h"

#include <algorithm>

namespace Wainroad {

View* gKeyPanel = nullptr;
Int gReturnItem = 0, gCancelItem = 0, gOutlineItem = 0, gEditItems = 0;
Int gTENumeric = 0, gTEMaxChars = 0, gTELimitWidth = 0, gTEMaxWidth = 0;

/// What `PushKeys` saves.
struct KeyTable {
    View* panel = nullptr;
    Int returnItem = 0, cancelItem = 0, outlineItem = 0, editItems = 0, numeric = 0, maxChars = 0;
};
static RunState<KeyTable> sSavedKeys;

static void setTable(const KeyTable& table)
{
    gKeyPanel = table.panel;
    gReturnItem = table.returnItem, gCancelItem = table.cancelItem, gOutlineItem = table.outlineItem;
    gEditItems = table.editItems, gTENumeric = table.numeric, gTEMaxChars = table.maxChars;
}

static const AtRunStart sRenewKeys([] {
    setTable({});
    gTELimitWidth = gTEMaxWidth = 0;
});

void SetKeys(View& panel, Int outlined, Int returnItem, Int cancelItem)
{
    gKeyPanel = &panel;
    gOutlineItem = outlined, gReturnItem = returnItem, gCancelItem = cancelItem;
}

void PushKeys()
{
    *sSavedKeys = {gKeyPanel, gReturnItem, gCancelItem, gOutlineItem, gEditItems, gTENumeric, gTEMaxChars};
    setTable({});
}

void PopKeys() { setTable(*sSavedKeys); }

void ClearKeys()
{
    *sSavedKeys = {};
    setTable({});
    gTELimitWidth = gTEMaxWidth = 0;
}

void ForgetKeys(const View& view)
{
    if (gKeyPanel == &view)
        gKeyPanel = nullptr;
    if (sSavedKeys->panel == &view)
        sSavedKeys->panel = nullptr;
}

/// The `ordinal`-th push button, counted from the newest item; nil if there is none.
static View* pushButton(View& panel, Int ordinal)
{
    for (auto child = panel.children.rbegin(); child != panel.children.rend(); ++child)
        if ((*child)->type == kButtonItem && --ordinal == 0)
            return child->get();
    return nullptr;
}

void DrawOutline()
{
    if (!IsPanel(gKeyPanel) || gKeyPanel->disabled != 0 || gOutlineItem == 0)
        return;
    const View* button = pushButton(*gKeyPanel, gOutlineItem);
    if (!button)
        return;
    const PenScope pen;
    const ClipScope clip(gKeyPanel->r);
    PenNormal();
    PenSize(3, 3);
    const Rect& r = button->r;
    FrameRoundRect({r.top - 4, r.left - 4, r.bottom + 4, r.right + 4}, 16, 16);
}

void PressButton(View* panel, Int ordinal)
{
    if (!IsPanel(panel) || panel->disabled != 0)
        return;
    const View* button = pushButton(*panel, ordinal);
    const Point at = button ? Point{button->r.top + 1, button->r.left + 1} : Point{1, 1};
    View& root = *panel->parent;
    const ViewPortScope port(root);
    for (auto child = root.children.rbegin(); child != root.children.rend(); ++child) {
        View& target = **child;
        if (target.disabled == 0 && target.r.contains(at)) {
            Msg msg{kMsgClick, at.toLong(), 0, {}};
            SendMsg(target, msg);
            return;
        }
    }
}

} // namespace Wainroad
