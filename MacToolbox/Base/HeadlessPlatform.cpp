#include "MacToolbox/Base/HeadlessPlatform.h"

namespace MacToolbox {

void HeadlessPlatform::run(const std::string&, const std::function<void()>& begin)
{
    begin();
    queue_.runForever();
}

std::optional<std::string> HeadlessPlatform::pasteboard()
{
    const std::lock_guard lock(pasteboardLock_);
    return pasteboard_;
}

void HeadlessPlatform::setPasteboard(const std::string& text)
{
    const std::lock_guard lock(pasteboardLock_);
    pasteboard_ = text;
}

} // namespace MacToolbox
