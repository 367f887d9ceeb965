#include "Tests/Desktop/DesktopFixture.h"

#include "MacToolbox/Base/RunState.h"

#include <cstdlib>

#include <QApplication>

using namespace MacToolbox;

void DesktopTest::SetUp()
{
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("XDG_CONFIG_HOME", folder_.path("config").c_str(), 1);
    setenv("WR_DATA", folder_.path("data").c_str(), 1);
    setenv("WR_SCRIPT", "", 1); // no settings are read
    static auto& application = *new QApplication(count, arguments);
    startRunAfresh();
    platform_ = std::make_unique<Desktop::DesktopPlatform>(application);
    Platform::install(platform_.get());
    platform_->launch("The Wainroad");
    settle();
    taken();
}

void DesktopTest::TearDown()
{
    settle();
    Platform::install(nullptr);
    platform_.reset();
}

void DesktopTest::settle()
{
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::vector<EventRecord> DesktopTest::taken()
{
    std::vector<EventRecord> all;
    while (const auto event = Input::take(everyEvent, true))
        all.push_back(*event);
    return all;
}
