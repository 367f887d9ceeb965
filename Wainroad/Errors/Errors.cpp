#include "Wainroad/Errors/Errors.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "MacToolbox/Host/Misc.h"
#include "MacToolbox/Managers/Cursors.h"
#include "MacToolbox/Managers/Dialogs.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace Wainroad {

static constexpr Int kErrorTexts = 1000, kAlertTexts = 1001; // STR#
static constexpr Int kFatalAlert = 1000, kDiskAlert = 1001;
static constexpr Int kFatalHeadline = 2, kMemoryHeadline = 3;     // of kAlertTexts
static constexpr Int kDiskFatalHeadline = 14, kDiskHeadline = 15; // of kErrorTexts
static const Str255 kNoText{0};

static RunState<Int> sFatals; // calls of `Fatal` so far

static Str255 counted(std::span<const std::uint8_t> text)
{
    const std::size_t length = std::min<std::size_t>(text.size(), 255);
    Str255 s(length + 1);
    s[0] = static_cast<std::uint8_t>(length);
    std::copy_n(text.begin(), length, s.begin() + 1);
    return s;
}

ErrorHooks& errorHooks()
{
    static ErrorHooks& hooks = *new ErrorHooks;
    return hooks;
}

static void printLine(const std::string& text)
{
    const std::string line = "wainroad: " + text + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

void PrintError(const Str255& text)
{
    std::string line = string(text);
    for (char& c : line)
        if (c == '\r' || c == '\n')
            c = ' ';
    printLine(line);
}

[[noreturn]] static void endRun(int status)
{
    if (errorHooks().flushConfig)
        errorHooks().flushConfig();
    if (errorHooks().closeNetwork)
        errorHooks().closeNetwork();
    ExitToShell(status);
}

void Fatal(Int error, std::string_view where)
{
    Str255 number{0};
    AppendNumber(error, number);
    printLine("error " + string(number) + " in " + std::string(where));
    switch (++*sFatals) {
    case 1: break;
    case 2: endRun(1);       // raised while the first was being shown
    default: ExitToShell(1); // raised by the last steps themselves
    }

    InitCursor();
    Str255 headline, extra{0};
    GetIndString(headline, kAlertTexts, error == memFullErr ? kMemoryHeadline : kFatalHeadline);
    if (const Handle text = GetResource(os("QUIL"), 2); text && text->count() > 0)
        extra = text->pstr(0);
    ParamText(headline, number, pstr(where), extra);
    if (errorHooks().centeredAlert)
        errorHooks().centeredAlert(kFatalAlert);
    endRun(0);
}

void AppendNumber(Int n, Str255& text)
{
    const auto old = characters(text);
    Bytes joined(old.begin(), old.end());
    for (const char digit : std::to_string(n))
        joined.push_back(static_cast<std::uint8_t>(digit));
    text = counted(joined);
}

bool ErrorMessage(Int number, Str255& text)
{
    const std::string prefix = std::to_string(number) + ",";
    for (Int index = 1;; ++index) {
        Str255 entry;
        GetIndString(entry, kErrorTexts, index);
        const auto body = characters(entry);
        if (body.empty())
            return false;
        if (body.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), body.begin())) {
            text = counted(body.subspan(prefix.size()));
            return true;
        }
    }
}

/// The stop alert with the text of the error, centred. @return What is to go to `Fatal`, or 0.
static Int showDiskAlert(Int error, bool fatal)
{
    Str255 text, headline;
    if (!ErrorMessage(error, text))
        return error;
    GetIndString(headline, kErrorTexts, fatal ? kDiskFatalHeadline : kDiskHeadline);
    ParamText(text, headline, kNoText, kNoText);
    const Handle alert = GetResource(os("ALRT"), kDiskAlert);
    if (!alert || alert->count() < 8)
        return alert ? resNotFound : ResError();
    Rect r = alert->rect(0);
    if (errorHooks().centerRect)
        errorHooks().centerRect(r);
    alert->set16(0, r.top), alert->set16(2, r.left), alert->set16(4, r.bottom), alert->set16(6, r.right);
    if (fatal)
        PrintError(text);
    StopAlert(kDiskAlert);
    return 0;
}

void DiskError(Int error, bool fatal)
{
    const Int failure = showDiskAlert(error, fatal);
    if (failure != 0)
        Fatal(failure, "DiskError");
    if (!fatal)
        return;
    if (errorHooks().rewriteConfig)
        errorHooks().rewriteConfig();
    if (errorHooks().closeNetwork)
        errorHooks().closeNetwork();
    ExitToShell();
}

} // namespace Wainroad
