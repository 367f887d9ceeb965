#include "MacToolbox/Managers/StandardFile.h"

#include "MacToolbox/Host/GameThread.h"

#include <algorithm>

namespace MacToolbox {

namespace {

constexpr std::size_t kLongestSaveName = 63;

using Answer = std::optional<std::string>;

/// The path that a panel, or the queue of scripted answers, gives.
Answer ask(const PanelRequest& request)
{
    if (!Platform::current().hasPanels())
        return HostFiles::scriptedAnswer();
    return GameThread::waitForMain<Answer>(
        [&request](const std::function<void(Answer)>& done) { Platform::current().showPanel(request, done); });
}

} // namespace

void SFGetFile(Point, const Str255&, const FileFilterProc& fileFilter, Int numTypes,
    const std::vector<OSType>& typeList, std::nullptr_t, SFReply& reply)
{
    const auto typesEnd = typeList.begin() + std::clamp<Int>(numTypes, 0, I(typeList.size()));
    PanelRequest request;
    request.folder = HostFiles::dataFolder();
    // By value: a panel may ask once more while it goes.
    const auto isListed = [all = numTypes < 1, types = std::vector(typeList.begin(), typesEnd)](OSType type) {
        return all || std::find(types.begin(), types.end(), type) != types.end();
    };
    request.accepts = [isListed, fileFilter](const std::string& path) {
        const OSType type = HostFiles::finderInfo(path).fdType;
        return isListed(type) && (!fileFilter || !fileFilter(type, HostFiles::nameOf(path)));
    };
    const Answer path = ask(request);
    reply = SFReply{};
    if (!path)
        return;
    const OSType type = HostFiles::finderInfo(*path).fdType;
    const Str255 name = HostFiles::nameOf(*path);
    if (fileFilter && fileFilter(type, name))
        return;
    reply.good = true;
    reply.fType = type;
    reply.vRefNum = HostFiles::wd(HostFiles::folderOf(*path));
    reply.fName = name;
}

void SFPutFile(Point, const Str255& prompt, const Str255& origName, std::nullptr_t, SFReply& reply, OSType kind)
{
    PanelRequest request;
    request.saving = true;
    request.prompt = string(prompt);
    request.name = string(origName);
    if (kind != 0)
        request.accepts = [kind](const std::string& path) { return HostFiles::finderInfo(path).fdType == kind; };
    request.folder = HostFiles::dataFolder();
    const Answer path = ask(request);
    reply = SFReply{};
    if (!path)
        return;
    reply.good = true;
    reply.vRefNum = HostFiles::wd(HostFiles::folderOf(*path));
    reply.fName = HostFiles::nameOf(*path, kLongestSaveName);
}

} // namespace MacToolbox
