#include "Desktop/NativeMenus.h"

#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Host/Input.h"

#include <algorithm>

#include <QApplication>
#include <QProxyStyle>

namespace Desktop {

using namespace MacToolbox;

namespace {

constexpr std::uint8_t kAppleTitle = 20; // the one character of the Apple menu's title

/// Alt is Option: alone it opens no menu.
class MenuBarStyle final : public QProxyStyle {
public:
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override
    {
        return hint == SH_MenuBar_AltKeyNavigation ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

/// A text as it is, with no key of the host's hidden in it.
QString plain(QString text) { return text.replace('&', "&&"); }

QString fromRoman(std::span<const std::uint8_t> bytes) { return plain(QString::fromStdString(fromMacRoman(bytes))); }

bool isApple(const MenuBar::Snapshot::M& menu) { return menu.title == Str255{1, kAppleTitle}; }

} // namespace

NativeMenus::NativeMenus(QMenuBar& bar) : bar_(bar)
{
    bar_.setNativeMenuBar(false);
    auto* const style = new MenuBarStyle;
    style->setParent(&bar_);
    bar_.setStyle(style);
    bar_.setAccessibleName("Menus");
}

bool NativeMenus::isOpen() const
{
    const auto visible = [](const QMenu* menu) { return menu->isVisible(); };
    return std::ranges::any_of(owned_, visible) || std::ranges::any_of(extraMenus, visible);
}

void NativeMenus::rebuild()
{
    if (isOpen())
        return; // it comes again when the menu is closed
    Snapshot now = MenuBar::published();
    if (built_ == now)
        return;
    built_ = std::move(now);
    build();
}

void NativeMenus::build()
{
    bar_.clear();
    for (QMenu* const menu : owned_)
        menu->deleteLater(); // one of its actions may be running
    owned_.clear();
    addProgramMenu();
    for (const auto& menu : built_->menus)
        if (!isApple(menu))
            addMenu(menu);
    for (QMenu* const menu : extraMenus) {
        bar_.addMenu(menu);
        watch(*menu);
    }
}

void NativeMenus::watch(QMenu& menu)
{
    QObject::disconnect(&menu, &QMenu::aboutToHide, &bar_, nullptr);
    QObject::connect(
        &menu, &QMenu::aboutToHide, &bar_, [this] { rebuild(); }, Qt::QueuedConnection);
}

void NativeMenus::addProgramMenu()
{
    auto* const menu = new QMenu(plain(appName), &bar_);
    menu->setAccessibleName(appName);
    const auto apple = std::ranges::find_if(built_->menus, isApple);
    if (apple != built_->menus.end() && !apple->items.empty()) {
        addItem(*menu, *apple, 0);
        menu->addSeparator();
    }
    menu->addAction(plain("Hide " + appName) + "\tCtrl+H", [this] { hide(); });
    menu->addSeparator();
    menu->addAction(plain("Quit " + appName) + "\tCtrl+Q", [this] { quit(); });
    bar_.addMenu(menu);
    owned_.push_back(menu);
    watch(*menu);
}

void NativeMenus::addMenu(const Snapshot::M& from)
{
    auto* const menu = new QMenu(fromRoman(characters(from.title)), &bar_);
    menu->setAccessibleName(QString::fromStdString(string(from.title)));
    for (std::size_t i = 0; i < from.items.size(); ++i)
        addItem(*menu, from, i);
    bar_.addMenu(menu)->setEnabled(from.enabled);
    owned_.push_back(menu);
    watch(*menu);
}

void NativeMenus::addItem(QMenu& menu, const Snapshot::M& from, std::size_t index)
{
    const MenuRecord::Item& item = from.items[index];
    if (item.isSeparator()) {
        menu.addSeparator();
        return;
    }
    QString text = fromRoman(item.text);
    if (item.key != 0)
        text += "\tCtrl+" + fromRoman({&item.key, 1}).toUpper();
    const Int menuID = from.id, number = I(index) + 1;
    QAction* const action = menu.addAction(text, [menuID, number] { Input::menuChoice(menuID, number); });
    action->setMenuRole(QAction::NoRole);
    action->setEnabled(item.enabled && from.enabled);
    action->setCheckable(item.mark != noMark);
    action->setChecked(item.mark != noMark);
}

} // namespace Desktop
