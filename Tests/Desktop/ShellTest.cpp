// The window, its menus, its file panels and its ways to quit.

#include "Desktop/PanelFilter.h"
#include "Desktop/Voice.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Files.h"
#include "MacToolbox/Managers/Menus.h"
#include "MacToolbox/Managers/StandardFile.h"
#include "Tests/Desktop/DesktopFixture.h"

#include <filesystem>
#include <thread>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>

using namespace MacToolbox;

namespace {

class Shell : public DesktopTest {
protected:
    QMenu* menu(const QString& title)
    {
        for (QAction* const action : delegate().window().menuBar()->actions())
            if (action->text() == title)
                return action->menu();
        return nullptr;
    }
    Desktop::FilePanel* panel() { return delegate().window().findChild<Desktop::FilePanel*>(); }
};

MenuHandle gameMenu(Int id, const char* title, const char* items)
{
    const MenuHandle menu = NewMenu(id, pstr(title));
    AppendMenu(menu, pstr(items));
    return menu;
}

bool isQuitKey(const EventRecord& event)
{
    return event.what == keyDown && (event.message & charCodeMask) == 'q' && (event.modifiers & cmdKey) != 0;
}

} // namespace

TEST_F(Shell, TheMenuBarIsWhatTheGamePublished)
{
    SetMenuBar({gameMenu(1, "\x14", "About;Rest"), gameMenu(2, "Salt & Meal", "Open & Shut/o;-;(Off;!\x12On")});
    DrawMenuBar();
    settle();
    const auto titles = delegate().window().menuBar()->actions();
    ASSERT_EQ(titles.size(), 3);
    EXPECT_EQ(titles[0]->text(), "The Wainroad");
    EXPECT_EQ(titles[1]->text(), "Salt && Meal");
    EXPECT_EQ(titles[2]->text(), "Window");
    EXPECT_EQ(menu("The Wainroad")->actions()[0]->text(), "About");
    const auto items = menu("Salt && Meal")->actions();
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(items[0]->text(), "Open && Shut\tCtrl+O");
    EXPECT_TRUE(items[1]->isSeparator());
    EXPECT_FALSE(items[2]->isEnabled());
    EXPECT_TRUE(items[3]->isChecked());

    items[3]->trigger();
    const auto events = taken();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].where, (Point{2, 2}));
    EXPECT_EQ(Input::takeMenuChoice(-events[0].message), packMenuChoice(2, 4));
}

TEST_F(Shell, AnOpenMenuStaysAsItIsUntilItIsClosed)
{
    const MenuHandle game = gameMenu(2, "Play", "One;Two");
    SetMenuBar({game});
    DrawMenuBar();
    settle();
    QMenu* const open = menu("Play");
    open->popup({0, 0});
    settle();
    DisableItem(game, 1);
    DrawMenuBar();
    settle();
    ASSERT_EQ(menu("Play"), open);
    EXPECT_TRUE(open->actions()[0]->isEnabled());
    open->close();
    settle();
    ASSERT_NE(menu("Play"), nullptr);
    EXPECT_FALSE(menu("Play")->actions()[0]->isEnabled());
}

TEST_F(Shell, AQuitIsACommandKeyAndAFlagOnlyWhereKeysGoUnseen)
{
    delegate().window().close();
    EXPECT_TRUE(delegate().window().isVisible());
    delegate().requestQuit();
    auto events = taken();
    ASSERT_EQ(events.size(), 2U);
    EXPECT_TRUE(isQuitKey(events[0]) && isQuitKey(events[1]));
    EXPECT_FALSE(Input::quitRequested);
    {
        const Input::Unseen alert;
        delegate().requestQuit();
        EXPECT_TRUE(Input::quitRequested);
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
    QApplication::sendEvent(&view(), &press);
    EXPECT_TRUE(Input::quitRequested) << "the game has not seen the quit yet";
    taken();
    QApplication::sendEvent(&view(), &press);
    EXPECT_FALSE(Input::quitRequested) << "the player has gone on: later alerts are to stay";
}

TEST_F(Shell, TheEndOfTheSessionIsAQuitAndTakesAnOpenPanelBack)
{
    std::optional<std::string> answer = "none yet";
    PanelRequest request;
    request.folder = folder_.path("data");
    platform_->showPanel(request, [&](std::optional<std::string> path) { answer = path; });
    settle();
    ASSERT_TRUE(panel());
    // The session manager's object cannot be made here: the signal is sent to the handler with the one that it ignores.
    QMetaObject::invokeMethod(qApp, "commitDataRequest", Qt::DirectConnection,
        QGenericArgument("QSessionManager&", static_cast<void*>(qApp)));
    settle();
    EXPECT_EQ(answer, std::nullopt);
    const auto events = taken();
    ASSERT_EQ(events.size(), 1U);
    EXPECT_TRUE(isQuitKey(events[0]));
}

TEST_F(Shell, TheOpenPanelShowsFilesOfTheRightTypeAndFolders)
{
    const std::string data = folder_.path("data");
    std::filesystem::create_directories(data + "/older");
    folder_.write("data/good", "1");
    folder_.write("data/other", "2");
    folder_.write("data/._companion", "3");
    PanelRequest request;
    request.folder = data;
    request.accepts = [](const std::string& path) { return path.ends_with("/good"); };
    std::optional<std::string> answer;
    platform_->showPanel(request, [&](std::optional<std::string> path) { answer = path; });
    ASSERT_TRUE(panel());
    EXPECT_EQ(panel()->directory().absolutePath().toStdString(), std::filesystem::absolute(data).string());
    auto* const list = panel()->findChild<QListView*>("listView");
    ASSERT_TRUE(list);
    QStringList shown;
    for (int wait = 0; wait < 100 && shown.size() < 2; ++wait) {
        settle();
        shown.clear();
        for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row)
            shown << list->model()->index(row, 0, list->rootIndex()).data().toString();
    }
    EXPECT_EQ(shown, (QStringList{"older", "good"}));
    panel()->findChild<QLineEdit*>("fileNameEdit")->setText("good");
    QMetaObject::invokeMethod(panel(), "accept");
    settle();
    EXPECT_EQ(answer, data + "/good");
    EXPECT_FALSE(std::filesystem::exists(folder_.path("config/QtProject.conf"))) << "a panel keeps a history";
}

TEST_F(Shell, TheSavePanelRefusesNamesThatTheGameCannotWrite)
{
    EXPECT_EQ(Desktop::FilePanel::refusal("Hob & Zoé"), "");
    EXPECT_EQ(Desktop::FilePanel::refusal(QString(63, QChar(u'é'))), "");
    EXPECT_NE(Desktop::FilePanel::refusal(QString(64, QChar(u'x'))), "");
    EXPECT_NE(Desktop::FilePanel::refusal(QString::fromUtf8("Я")), "");
    EXPECT_NE(Desktop::FilePanel::refusal("._Hob"), "");

    PanelRequest request;
    request.saving = true;
    request.prompt = "Save it as:";
    request.name = "Hob";
    request.folder = folder_.path("data");
    std::optional<std::string> answer;
    platform_->showPanel(request, [&](std::optional<std::string> path) { answer = path; });
    settle();
    ASSERT_TRUE(panel());
    auto* const field = panel()->findChild<QLineEdit*>("fileNameEdit");
    EXPECT_EQ(field->text(), "Hob");
    field->setText(QString::fromUtf8("Я"));
    QMetaObject::invokeMethod(panel(), "accept");
    settle();
    ASSERT_TRUE(panel()) << "the panel closed on a name that it should refuse";
    auto* const box = panel()->findChild<QMessageBox*>();
    ASSERT_TRUE(box);
    box->close();
    settle();
    field->setText("Zoé");
    QMetaObject::invokeMethod(panel(), "accept");
    settle();
    EXPECT_EQ(answer, folder_.path("data") + "/Zoé");
}

TEST_F(Shell, ThePictureIsTakenOnlyWhenItIsAnother)
{
    Screen::shared().publish(true);
    EXPECT_TRUE(view().refresh());
    EXPECT_FALSE(view().refresh());
    Screen::shared().publish(true);
    EXPECT_FALSE(view().refresh()) << "another frame with the same pixels";
}

TEST_F(Shell, ThoseWhoHearTheScreenAreToldDateAndPlace)
{
    platform_->statusChanged("April 1, 1848. Lanthorn");
    settle();
    EXPECT_EQ(delegate().window().accessibleDescription(), "April 1, 1848. Lanthorn");
    EXPECT_EQ(delegate().window().accessibleName(), "The Wainroad");
}

TEST(Voice, TakesTheNearestLowerSampleAtHalfOfFullScale)
{
    const std::uint8_t samples[] = {128, 255, 0};
    const auto frames = Desktop::Voice::resampled(samples, 22050);
    const std::vector<float> wanted{0, 0, 127 * 0.0078125F * 0.5F, 127 * 0.0078125F * 0.5F, -0.5F, -0.5F};
    EXPECT_EQ(frames, wanted);
    EXPECT_TRUE(Desktop::Voice::resampled({}, 22050).empty());
    EXPECT_EQ(Desktop::Voice::resampled(samples, 44100 * 3.0).size(), 1U);
}
