#include "Wainroad/Screens/Management.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Input.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/Sound.h"
#include "MacToolbox/QuickDraw/QuickDraw.h"
#include "Wainroad/Errors/Errors.h"
#include "Wainroad/Frame/Alerts.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Persistence/Config.h"
#include "Wainroad/Screens/ModalDialogs.h"
#include "Wainroad/Screens/PasswordField.h"
#include "Wainroad/Simulation/Records.h"

namespace Wainroad {

bool gManagement = false;

namespace {

const AtRunStart sFreshStart([] { gManagement = false; });

constexpr Int kManagementMenu = 1004, kSwitchItem = 2;
constexpr std::array<Int, 4> kSettingItems{4, 5, 6, 7};
constexpr Int kMenuTexts = 1004, kTexts = 3000, kPasswordTexts = 3003;
enum MenuText : Int { kUnlockText = 1, kLockText = 2 };
enum PasswordNote : Int { kWrongPassword = 1, kEmptyPassword = 2 };
constexpr Int kOK = 1, kCancel = 2;

void setMenu(bool unlocked)
{
    const MenuHandle menu = GetMHandle(kManagementMenu);
    for (const Int item : kSettingItems)
        unlocked ? EnableItem(menu, item) : DisableItem(menu, item);
    SetItem(menu, kSwitchItem, ListString(kMenuTexts, unlocked ? kLockText : kUnlockText));
    gManagement = unlocked;
}

/// Capitals count as small letters, accents count.
bool isPassword(const Str255& text) { return EqualString(text, gOptions.password, false, true); }

void refusePassword(const DialogPtr& dialog, Int item, Int text)
{
    SelIText(dialog, item, 0, 2000);
    ShowNote(ListString(kPasswordTexts, text));
}

// ---- The lock

enum LockItems : Int { kLockRing = 3, kLockField = 5, kHintLabel = 6, kHintText = 7 };

bool askPassword(const DialogPtr& dialog)
{
    for (;;) {
        Int hit = 0;
        ModalDialog(PasswordFilter, hit);
        if (hit == kCancel)
            return false;
        if (hit != kOK)
            continue;
        if (isPassword(PasswordText()))
            return true;
        refusePassword(dialog, kLockField, kWrongPassword);
    }
}

// ---- The password itself

enum ChangeItems : Int { kOldPassword = 6, kNewPassword = 7, kHint = 8 };

/// What a password field makes of a key. @return False if it is refused.
bool passwordKey(const DialogPtr& dialog, EventRecord& event)
{
    constexpr Int kMostCharacters = 9; // that stay beside the new one
    Int character = event.message & charCodeMask;
    if (character == 27 || character == 127) {
        event.message = (event.message & ~I(charCodeMask)) | 8;
        character = 8;
    }
    if (character == 8 || character == 9 || (character >= 28 && character <= 31))
        return true;
    if (character < 33 || character > 126)
        return false;
    const TERec& te = *dialog->textH;
    if (te.teLength() - (te.selEnd - te.selStart) > kMostCharacters) {
        SysBeep(1);
        return false;
    }
    return true;
}

/// True if the hint keeps within its three lines after this key.
bool hintKey(const DialogPtr& dialog, EventRecord& event)
{
    constexpr Int kTooManyLines = 4;
    Int character = event.message & charCodeMask;
    if (character == 27 || character == 127) {
        character = 8;
        event.message = (event.message & ~I(charCodeMask)) | character;
    }
    if (character == 9)
        return true;
    const TERec& te = *dialog->textH;
    const TEHandle scratch = std::make_shared<TERec>(te);
    scratch->hText = PtrToHand(te.hText ? te.hText->bytes : Bytes());
    scratch->active = false;
    TEKey(character, scratch);
    if (scratch->nLines() < kTooManyLines)
        return true;
    SysBeep(1);
    return false;
}

bool changePasswordFilter(const DialogPtr& dialog, EventRecord& event, Int& item)
{
    if (event.what != keyDown && event.what != autoKey)
        return StdFilter(dialog, event, item);
    const Int character = event.message & charCodeMask;
    if (character == 13 || character == 3)
        event.message = (event.message & ~I(charCodeMask)) | 9; // on to the next field
    if (StdFilter(dialog, event, item))
        return true;
    if (!dialog->textH || (event.modifiers & cmdKey) != 0)
        return false;
    const Int field = dialog->editField + 1;
    const bool passes = field == kHint ? hintKey(dialog, event) : passwordKey(dialog, event);
    if (!passes)
        item = 0;
    return !passes;
}

/// Runs the dialog until the old password and a new one are given. @return False if it was cancelled.
bool askNewPassword(const DialogPtr& dialog)
{
    for (;;) {
        Int hit = 0;
        ModalDialog(changePasswordFilter, hit);
        if (hit == kCancel)
            return false;
        if (hit != kOK)
            continue;
        if (!isPassword(DialogText(dialog, kOldPassword))) {
            refusePassword(dialog, kOldPassword, kWrongPassword);
            continue;
        }
        if (DialogText(dialog, kNewPassword).size() > 1)
            return true;
        ShowNote(ListString(kPasswordTexts, kEmptyPassword));
    }
}

void takeNewPassword(const DialogPtr& dialog)
{
    constexpr std::size_t kPasswordLength = 10;
    Str255 password = DialogText(dialog, kNewPassword);
    password.resize(std::min(password.size(), 1 + kPasswordLength));
    password[0] = static_cast<std::uint8_t>(password.size() - 1);
    UpdateOptions([&] {
        gOptions.password = password;
        gOptions.hint = DialogText(dialog, kHint);
    });
}

// ---- The network

constexpr Int kNetworkRing = 3, kFirstMode = 4, kLastMode = 6;

/// Warns of a mode. @return True to go ahead.
bool networkAlert(const Str255& text)
{
    constexpr Int kAlert = 2005;
    WaitForSound();
    ParamText(&text, nullptr, nullptr, nullptr);
    if (!CenterAlert(kAlert))
        Fatal(ResError(), "NetworkAlert");
    return CautionAlert(kAlert) == kOK;
}

Int askMode(const DialogPtr& dialog)
{
    Int mode = gOptions.mode;
    for (;;) {
        Int hit = 0;
        ModalDialog(StdFilter, hit);
        if (hit == kOK)
            return mode;
        if (hit == kCancel)
            return gOptions.mode;
        if (hit >= kFirstMode && hit <= kLastMode) {
            mode = hit - kFirstMode;
            SetRadioGroup(dialog, kFirstMode, kLastMode, hit);
        }
    }
}

void changeMode(Int mode)
{
    constexpr Int kQuestion = 23;
    if (mode == gOptions.mode || (mode != 1 && !networkAlert(ListString(kTexts, kQuestion))))
        return;
    gConfigMode = 0;
    OpenConfigForUpdate();
    CopyOptionsOut();
    gOptions.mode = mode;
    WriteOptions();
    CloseConfig();
    OpenConfig();
}

} // namespace

void UpdateOptions(const std::function<void()>& change)
{
    const Int mode = gConfigMode;
    gConfigMode = 0;
    OpenConfigForUpdate();
    CopyOptionsOut();
    change();
    WriteOptions();
    CloseConfig();
    gConfigMode = mode;
}

void EnableManagement()
{
    constexpr Int kDialog = 2041, kNetworkNote = 1;
    const DialogPtr dialog = OpenModalDialog(kDialog);
    SetDefaultButton(dialog, kOK, kLockRing);
    if (gOptions.hint.size() < 2)
        SetDialogText(dialog, kHintLabel, Str255{0});
    SetDialogText(dialog, kHintText, gOptions.hint);
    InstallPasswordTE(dialog, kLockField);
    const bool unlocked = askPassword(dialog);
    if (unlocked)
        setMenu(true);
    RemovePasswordTE();
    CloseModalDialog(dialog);
    if (unlocked && gConfigMode == 1)
        ShowNote(ListString(kTexts, kNetworkNote));
}

void DisableManagement() { setMenu(false); }

void ChangePassword()
{
    constexpr Int kDialog = 2044;
    const DialogPtr dialog = OpenModalDialog(kDialog);
    SetDialogText(dialog, kHint, gOptions.hint);
    if (askNewPassword(dialog))
        takeNewPassword(dialog);
    CloseModalDialog(dialog);
}

void NetworkDialog()
{
    constexpr Int kDialog = 2043;
    const DialogPtr dialog = OpenModalDialog(kDialog);
    SetDefaultButton(dialog, kOK, kNetworkRing);
    SetRadioGroup(dialog, kFirstMode, kLastMode, kFirstMode + gOptions.mode);
    changeMode(askMode(dialog));
    CloseModalDialog(dialog);
}

} // namespace Wainroad
