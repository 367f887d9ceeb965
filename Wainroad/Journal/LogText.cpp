#include "Wainroad/Journal/LogText.h"

#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Managers/TextEdit.h"
#include "Wainroad/Frame/Utils.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Journal/Wording.h"

namespace Wainroad {

TEHandle gLogTE;

namespace {

const AtRunStart sFreshStart([] { gLogTE = nullptr; });

constexpr Int kMostCharacters = 32000;
constexpr Int kEverything = 32767;

} // namespace

void ClearLogText()
{
    if (gLogTE) {
        TESetSelect(0, kEverything, gLogTE);
        TEDelete(gLogTE);
        return;
    }
    gLogTE = TENew({0, 0, 100, 100}, {-100, 0, -1, 100});
    if (gLogTE)
        gLogTE->crOnly = -1; // lines stay as they are
}

void LogUpdate(const TEHandle& te)
{
    for (Int offset = 0; offset < gLogInfo.end; offset = NextMessage(offset))
        if (!IsHidden(offset))
            LogAppendString(te, MessageText(MessageAt(offset)), true);
}

void LogAppendString(const TEHandle& te, Str255 text, bool newline)
{
    if (!te)
        return;
    if (newline)
        PStrAppend(text, Str255{1, 13});
    if (te->teLength() > kMostCharacters && te->nLines() > 1) {
        TESetSelect(0, te->lineStart(1), te);
        TEDelete(te);
    }
    TESetSelect(kEverything, kEverything, te);
    const auto letters = characters(text);
    TEInsert(letters, I(letters.size()), te);
}

bool LogTextIsEmpty() { return !gLogTE || gLogTE->teLength() == 0; }

} // namespace Wainroad
