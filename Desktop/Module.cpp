// The one function that the executable looks for.

#include "Desktop/DesktopPlatform.h"
#include "MacToolbox/App/ModuleLoader.h"

#include <cstdio>

#include <QApplication>

namespace {

/// The host ends the process from within when there is no display: it shall say so in one line.
void onMessageAtStart(QtMsgType type, const QMessageLogContext&, const QString&)
{
    if (type != QtFatalMsg)
        return;
    std::fputs("wainroad: no window: there is no display to show it on; set WR_HEADLESS to run without\n", stderr);
    std::fflush(nullptr);
    std::_Exit(1);
}

} // namespace

extern "C" __attribute__((visibility("default"))) MacToolbox::Platform* wr_make_desktop(std::string&)
{
    static int count = 1; // no argument is read
    static char name[] = "wainroad";
    static char* arguments[] = {name, nullptr};

    const QtMessageHandler usual = qInstallMessageHandler(onMessageAtStart);
    auto* const application = new QApplication(count, arguments);
    qInstallMessageHandler(usual);
    QApplication::setApplicationName("wainroad");
    QApplication::setApplicationDisplayName("The Wainroad");
    QGuiApplication::setDesktopFileName("org.wainroad.Wainroad");
    QApplication::setQuitOnLastWindowClosed(false);
    return new Desktop::DesktopPlatform(*application);
}
