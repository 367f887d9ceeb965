#include "Desktop/Signals.h"

#include <csignal>

#include <QCoreApplication>
#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

namespace Desktop {

namespace {

int sPipe[2]; // a signal handler may do little more than write

void handle(int)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(sPipe[1], &byte, 1);
}

} // namespace

void onTerminationSignal(std::function<void()> act)
{
    if (pipe2(sPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* const notifier = new QSocketNotifier(sPipe[0], QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [act = std::move(act)] {
        char bytes[16];
        while (read(sPipe[0], bytes, sizeof bytes) > 0) { }
        act();
    });
    struct sigaction action { };
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace Desktop
