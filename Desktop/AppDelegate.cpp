#include "Desktop/AppDelegate.h"

#include "Desktop/PanelFilter.h"
#include "MacToolbox/App/App.h"
#include "MacToolbox/Host/Input.h"

#include <algorithm>
#include <cmath>

#include <QActionGroup>
#include <QApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QScreen>
#include <QSettings>

namespace Desktop {

using namespace MacToolbox;

namespace {

constexpr Int kMostScales = 8; // in the Window menu
constexpr const char* kScaleKey = "scale";
constexpr const char* kFullScreenKey = "fullScreen";

/// What the shell keeps from one start to the next: the enlargement and full screen, and nothing else.
QSettings settings() { return QSettings(QSettings::IniFormat, QSettings::UserScope, "The Wainroad", "Window"); }

} // namespace

AppDelegate::AppDelegate(const QString& title) : view_(new ScreenView), windowMenu_("Window")
{
    window_.setWindowTitle(title);
    window_.setWindowIcon(QIcon::fromTheme("org.wainroad.Wainroad", QIcon(":/icon.png")));
    window_.setAccessibleName(title);
    window_.setCentralWidget(view_);
    window_.setContextMenuPolicy(Qt::NoContextMenu);
    window_.installEventFilter(this);
    view_->setMinimumSize(view_->sizeFor(1));
    view_->hostKey = [this](const QKeyEvent& event) { return takeHostKey(event); };
    view_->onPress = [this] { playerGoesOn(); };

    menus_ = std::make_unique<NativeMenus>(*window_.menuBar());
    menus_->appName = title;
    menus_->hide = [this] { window_.showMinimized(); };
    menus_->quit = [this] { requestQuit(); };
    makeWindowMenu();
    menus_->extraMenus = {&windowMenu_};
    menus_->rebuild();
}

AppDelegate::~AppDelegate() { window_.removeEventFilter(this); }

// ---- The window

void AppDelegate::launch()
{
    const bool scripted = Platform::current().environment("WR_SCRIPT").has_value();
    keepsSettings_ = !scripted;
    setScale(std::min(WRApp::scale, largestScale()));
    if (keepsSettings_)
        restore();
    const QRect room = window_.screen()->availableGeometry();
    window_.move(room.center() - QPoint(window_.width() / 2, window_.height() / 2));
    window_.setAttribute(Qt::WA_ShowWithoutActivating, scripted);
    window_.show();
    window_.raise();
    if (!scripted)
        window_.activateWindow();
    view_->setFocus();
}

Int AppDelegate::largestScale() const
{
    const QRect room = window_.screen()->availableGeometry();
    for (Int scale = kMostScales; scale > 1; --scale)
        if (const QSize size = view_->sizeFor(scale); size.width() <= room.width() && size.height() <= room.height())
            return scale;
    return 1;
}

Int AppDelegate::currentScale() const
{
    for (Int scale = kMostScales; scale >= 1; --scale)
        if (view_->sizeFor(scale) == view_->size())
            return scale;
    return 0;
}

void AppDelegate::setScale(Int scale)
{
    if (window_.isFullScreen() || window_.isMaximized())
        window_.showNormal();
    const QSize size = view_->sizeFor(scale);
    window_.resize(size + QSize(0, fitMenuBar()));
}

/// Gives the menu bar a height of whole device pixels, so that the picture below begins on one. @return The height.
int AppDelegate::fitMenuBar()
{
    constexpr int kMostMore = 8;
    QMenuBar& bar = *window_.menuBar();
    const double ratio = window_.devicePixelRatioF();
    const auto isWhole = [ratio](int height) { return std::abs(height * ratio - std::round(height * ratio)) < 0.01; };
    const int natural = bar.sizeHint().height();
    int height = natural;
    while (!isWhole(height) && height < natural + kMostMore)
        ++height;
    bar.setFixedHeight(height);
    return height;
}

void AppDelegate::toggleFullScreen()
{
    if (window_.isFullScreen())
        window_.showNormal();
    else
        window_.showFullScreen();
    keep();
}

void AppDelegate::restore()
{
    const QSettings kept = settings();
    if (const Int scale = kept.value(kScaleKey, 0).toInt(); scale >= 1 && scale <= largestScale())
        setScale(scale);
    if (kept.value(kFullScreenKey, false).toBool())
        window_.setWindowState(Qt::WindowFullScreen);
}

void AppDelegate::keep() const
{
    if (!keepsSettings_)
        return;
    QSettings kept = settings();
    if (const Int scale = currentScale(); scale > 0 && !window_.isFullScreen())
        kept.setValue(kScaleKey, static_cast<int>(scale));
    kept.setValue(kFullScreenKey, window_.isFullScreen());
}

void AppDelegate::makeWindowMenu()
{
    windowMenu_.setAccessibleName("Window");
    QObject::connect(&windowMenu_, &QMenu::aboutToShow, this, [this] { aboutToShowWindowMenu(); });
    aboutToShowWindowMenu(); // an empty menu does not open
}

void AppDelegate::aboutToShowWindowMenu()
{
    windowMenu_.clear();
    windowMenu_.addAction("Minimize\tCtrl+M", [this] { window_.showMinimized(); });
    windowMenu_.addSeparator();
    const Int now = currentScale();
    for (Int scale = 1; scale <= largestScale(); ++scale) {
        QAction* const action = windowMenu_.addAction(QString("Size %1 ×").arg(scale), [this, scale] {
            setScale(scale);
            keep();
        });
        action->setCheckable(true);
        action->setChecked(scale == now && !window_.isFullScreen());
    }
    windowMenu_.addSeparator();
    QAction* const full = windowMenu_.addAction("Full Screen\tF11", [this] { toggleFullScreen(); });
    full->setCheckable(true);
    full->setChecked(window_.isFullScreen());
}

bool AppDelegate::eventFilter(QObject* object, QEvent* event)
{
    if (object != &window_)
        return false;
    switch (event->type()) {
    case QEvent::Close:
        event->ignore(); // the window never closes by itself
        requestQuit();
        return true;
    case QEvent::WindowDeactivate: view_->releaseAll(); return false;
    default: return false;
    }
}

bool AppDelegate::takeHostKey(const QKeyEvent& event)
{
    const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    if (modifiers == Qt::ControlModifier && (event.key() == Qt::Key_M || event.key() == Qt::Key_H)) {
        window_.showMinimized();
        return true;
    }
    if (modifiers != Qt::NoModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_F11:
        if (!event.isAutoRepeat())
            toggleFullScreen();
        return true;
    case Qt::Key_F10:
        if (const auto actions = window_.menuBar()->actions(); !actions.isEmpty())
            window_.menuBar()->setActiveAction(actions.front());
        return true;
    default: return false;
    }
}

// ---- Quitting

void AppDelegate::requestQuit()
{
    if (panel_)
        panel_->reject();
    if (Input::keysUnseen())
        Input::requestQuit();
    else
        Input::quitKey();
}

/// A press when a quit that was asked for by the flag has been dealt with: the player has taken it back, and later
/// alerts are to stay.
void AppDelegate::playerGoesOn()
{
    if (Input::quitRequested && !Input::keysUnseen() && Input::isEmpty())
        Input::quitRequested = false;
}

// ---- File panels

void AppDelegate::showPanel(const PanelRequest& request, std::function<void(std::optional<std::string>)> done)
{
    panel_ = new FilePanel(&window_, request, std::move(done));
    panel_->open();
}

} // namespace Desktop
