#include "Desktop/DesktopPlatform.h"

#include "Desktop/Signals.h"
#include "MacToolbox/Managers/ModalDialog.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QThread>

namespace Desktop {

using namespace MacToolbox;

// ---- The main thread

void DesktopPlatform::post(std::function<void()> block)
{
    QMetaObject::invokeMethod(&application_, std::move(block), Qt::QueuedConnection);
}

bool DesktopPlatform::isMainThread() const { return QThread::currentThread() == application_.thread(); }

void DesktopPlatform::pumpMain() { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10); }

void DesktopPlatform::launch(const std::string& title)
{
    delegate_ = std::make_unique<AppDelegate>(QString::fromStdString(title));
    QObject::connect(
        &application_, &QGuiApplication::commitDataRequest, delegate_.get(), [this] { delegate_->requestQuit(); });
    escapeCancels = true;
    delegate_->launch();
}

void DesktopPlatform::run(const std::string& title, const std::function<void()>& begin)
{
    launch(title);
    onTerminationSignal([this] { delegate_->requestQuit(); });
    begin();
    exitProcess(QApplication::exec());
}

void DesktopPlatform::gameEnded() { QCoreApplication::exit(0); }

// ---- The window

void DesktopPlatform::cursorChanged(const Cursor* cursor)
{
    post([this, cursor = cursor ? std::optional(*cursor) : std::nullopt] { delegate_->view().setGameCursor(cursor); });
}

void DesktopPlatform::hideCursor()
{
    post([this] { delegate_->view().hideCursor(true); });
}

void DesktopPlatform::showCursor()
{
    post([this] { delegate_->view().hideCursor(false); });
}

void DesktopPlatform::obscureCursor()
{
    post([this] { delegate_->view().obscureCursor(); });
}

void DesktopPlatform::menusChanged()
{
    post([this] { delegate_->menus().rebuild(); });
}

void DesktopPlatform::statusChanged(const std::string& text)
{
    post([this, text = QString::fromStdString(text)] { delegate_->view().setStatus(text); });
}

void DesktopPlatform::showPanel(const PanelRequest& request, std::function<void(std::optional<std::string>)> done)
{
    delegate_->showPanel(request, std::move(done));
}

// ---- The rest of the machine

void DesktopPlatform::beep()
{
    if (!voice_.beep())
        QApplication::beep();
}

std::optional<std::string> DesktopPlatform::pasteboard()
{
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasText() ? std::optional(data->text().toStdString()) : std::nullopt;
}

void DesktopPlatform::setPasteboard(const std::string& text)
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace Desktop
