#include "Wainroad/Screens/PasswordField.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Utils.h"

namespace Wainroad {

namespace {

constexpr Int kBullet = 165;
constexpr Int kOutOfSight = 512; // pixels right and down

struct PasswordState {
    TEHandle te;
    Int item = 0;
};
RunState<PasswordState> sPassword;

bool isNavigation(Int character) { return character == 9 || (character >= 28 && character <= 31); }

/// Gives the key to the record that nobody sees, at the place where the field takes it.
void typeUnseen(Int character, const TERec& field)
{
    TESetSelect(field.selStart, field.selEnd, sPassword->te);
    TEKey(character, sPassword->te);
}

} // namespace

void InstallPasswordTE(const DialogPtr& dialog, Int item)
{
    const DItem* field = dialog ? dialog->item(item) : nullptr;
    if (!field)
        return;
    const PortScope port(dialog->port);
    const Rect place = field->rect.offsetBy(kOutOfSight, kOutOfSight);
    sPassword->te = TENew(place, place);
    sPassword->item = item;
}

void RemovePasswordTE() { *sPassword = {}; }

Str255 PasswordText()
{
    const bool typed = sPassword->te && sPassword->te->hText;
    return typed ? PStrOf(sPassword->te->hText->bytes) : Str255{0};
}

bool PasswordFilter(const DialogPtr& dialog, EventRecord& event, Int& item)
{
    if (StdFilter(dialog, event, item))
        return true;
    const bool isKey = event.what == keyDown || event.what == autoKey;
    if (!isKey || !sPassword->te || !dialog->textH || dialog->editField + 1 != sPassword->item)
        return false;
    const Int character = event.message & charCodeMask;
    const bool passes = character > 32 ? character < 127 : character == 8 || isNavigation(character);
    if (!passes || (event.modifiers & cmdKey) != 0) {
        item = 0;
        return true;
    }
    if (character > 32)
        event.message = (event.message & ~I(charCodeMask)) | kBullet;
    if (!isNavigation(character))
        typeUnseen(character, *dialog->textH);
    return false;
}

} // namespace Wainroad
