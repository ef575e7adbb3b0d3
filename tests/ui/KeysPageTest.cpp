#include "ViewerWindowFixture.h"

#include "commands/viewer/ViewerCommands.h"
#include "ui/commands/KeysDialog.h"
#include "ui/preferences/KeysPage.h"
#include "ui/preferences/PreferencesWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTreeWidget>

namespace daylark {

/// The page of keys beside a real viewer, both over the same preferences.
class KeysPageTest : public ViewerWindowFixture {
protected:
    void SetUp() override {
        openFrames(48);
        settings.show();
        settings.groups()->setCurrentItem(
            settings.groups()->findItems(QStringLiteral("Keys"), Qt::MatchExactly).value(0));
        settings.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&settings));
        page = settings.findChild<KeysPage*>();
        ASSERT_TRUE(page && page->isVisible());
        list = page->findChild<QTreeWidget*>(QStringLiteral("keyList"));
    }
    /// As a person does: types a part of the name, goes to the list, asks for another key, presses it.
    void find(const char* words) {
        auto* search = page->findChild<QLineEdit*>(QStringLiteral("keySearch"));
        search->setFocus();
        search->selectAll();
        QTest::keyClick(search, Qt::Key_Delete);
        QTest::keyClicks(search, QLatin1String(words));
        QTest::keyClick(search, Qt::Key_Return);
    }
    [[nodiscard]] QPushButton* button(const char* name) const {
        auto* found = page->findChild<QPushButton*>(QLatin1String(name));
        EXPECT_TRUE(found && found->isVisible()) << name;
        return found;
    }
    void pressInPage(int key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = settings.focusWidget();
        QTest::keyClick(focus ? focus : &settings, Qt::Key(key), modifiers);
    }
    void change(const char* words, int key, Qt::KeyboardModifiers modifiers = {}) {
        find(words);
        QTest::mouseClick(button("changeKey"), Qt::LeftButton);
        pressInPage(key, modifiers);
    }
    void pressInViewer(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window->picture(), Qt::Key(key), modifiers);
    }
    [[nodiscard]] QString question() const {
        const auto* label = page->findChild<QLabel*>(QStringLiteral("keyQuestion"));
        return label->isVisible() ? label->text() : QString();
    }
    [[nodiscard]] QStringList shown() const {
        QStringList names;
        for (int at = 0; at < list->topLevelItemCount(); ++at)
            for (int row = 0; row < list->topLevelItem(at)->childCount(); ++row)
                if (const auto* item = list->topLevelItem(at)->child(row); !item->isHidden())
                    names << item->text(0) + u'=' + item->text(1);
        return names;
    }
    [[nodiscard]] QAction* action(const char* id) { return window->commands().action(QLatin1String(id)); }

    PreferencesWindow settings{preferences, nullptr};
    KeysPage* page = nullptr;
    QTreeWidget* list = nullptr;
};

TEST_F(KeysPageTest, CommandIsFoundByItsNameOrItsKey) {
    find("add book");
    EXPECT_EQ(shown(), QStringList{QStringLiteral("Add Bookmark=;")});
    find("library session save");
    EXPECT_EQ(shown(), (QStringList{QStringLiteral("Save Session=Ctrl+S"),
                                    QStringLiteral("Save Session As...=Ctrl+Shift+S")}));
    find("ctrl+shift+1");
    EXPECT_EQ(shown(), QStringList{QStringLiteral("1:1 Pixels (Actual Size)=Ctrl+Shift+1")});
    find("no such thing");
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_FALSE(button("changeKey")->isEnabled());
    find("");
    EXPECT_EQ(shown().size(), qsizetype(viewerTable().size() + libraryTable().size()));
}

TEST_F(KeysPageTest, AnotherKeyHoldsAtOnceInTheViewerItsMenusAndTheListOfKeys) {
    KeysDialog dialog(window->commands(), viewerMenus(), QStringLiteral("Keys"), window.get());
    const auto listed = [&dialog](const char* key) {
        int count = 0;
        for (int row = 0; row < dialog.table()->rowCount(); ++row)
            if (const auto* item = dialog.table()->item(row, 1))
                count += item->text().trimmed() == QLatin1String(key);
        return count;
    };
    change("add bookmark", Qt::Key_Y);
    EXPECT_TRUE(question().isEmpty());
    EXPECT_EQ(shown(), QStringList{QStringLiteral("Add Bookmark=Y")});
    pressInViewer(Qt::Key_Semicolon);
    EXPECT_TRUE(first->bookmarkStore.empty());
    pressInViewer(Qt::Key_Y);
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
    EXPECT_TRUE(action("viewer.addBookmark")->toolTip().contains(QStringLiteral("(Y)")));
    EXPECT_TRUE(action("viewer.addBookmark")->text().endsWith(QStringLiteral("\tY")));
    EXPECT_EQ(listed("Y"), 1);
    EXPECT_EQ(listed(";"), 0);

    find("add bookmark");
    QTest::mouseClick(button("addKey"), Qt::LeftButton);
    pressInPage(Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(shown(), QStringList{QStringLiteral("Add Bookmark=Y / Ctrl+M")});
    goTo(20);
    ASSERT_TRUE(settled());
    pressInViewer(Qt::Key_M, Qt::ControlModifier);
    EXPECT_EQ(first->bookmarkStore.size(), 2U);
    // A key that writes stays with a field that is typed into.
    QLineEdit field(window.get());
    field.show();
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Y);
    EXPECT_EQ(field.text(), QStringLiteral("y"));
    EXPECT_EQ(first->bookmarkStore.size(), 2U);
}

TEST_F(KeysPageTest, KeyThatMeansAnotherCommandIsNamedAndGoesOverOnlyWhenTold) {
    change("add bookmark", Qt::Key_K);
    EXPECT_EQ(question(), QStringLiteral("K is the key of “Pause”."));
    EXPECT_FALSE(page->findChild<QPushButton*>(QStringLiteral("changeKey"))->isVisible())
        << "the question stands alone";
    QTest::mouseClick(button("leaveKey"), Qt::LeftButton);
    EXPECT_TRUE(question().isEmpty());
    EXPECT_FALSE(preferences.commandKeys.isStored());
    change("add bookmark", Qt::Key_K);
    pressInPage(Qt::Key_Space); // the button that takes it has the keyboard
    EXPECT_TRUE(question().isEmpty());
    pressInViewer(Qt::Key_K);
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
    find("pause playback");
    EXPECT_EQ(shown().last(), QStringLiteral("Pause="));
    find("viewer pause");
    page->choose(QStringLiteral("viewer.pause"));
    QTest::mouseClick(button("resetKey"), Qt::LeftButton);
    EXPECT_EQ(question(), QStringLiteral("K is the key of “Add Bookmark”."))
        << "going back may clash as well";
    QTest::mouseClick(button("takeKey"), Qt::LeftButton);
    pressInViewer(Qt::Key_K);
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
    // The same key in the other window is none of its business.
    change("recreate missing", Qt::Key_Backspace, Qt::ControlModifier);
    EXPECT_TRUE(question().isEmpty());
}

TEST_F(KeysPageTest, EscapeLeavesEverythingAndAllGoesBackToWhatItWas) {
    change("add bookmark", Qt::Key_Escape);
    EXPECT_TRUE(settings.isVisible()) << "it ends the waiting, not the window";
    EXPECT_FALSE(preferences.commandKeys.isStored());
    EXPECT_FALSE(button("resetKeys")->isEnabled());
    find("add bookmark");
    QTest::mouseClick(button("clearKey"), Qt::LeftButton);
    EXPECT_EQ(shown(), QStringList{QStringLiteral("Add Bookmark=")});
    change("full screen leave", Qt::Key_F9);
    EXPECT_TRUE(button("resetKeys")->isEnabled());
    QTest::mouseClick(button("resetKeys"), Qt::LeftButton);
    EXPECT_FALSE(preferences.commandKeys.isStored());
    pressInViewer(Qt::Key_Semicolon);
    EXPECT_EQ(first->bookmarkStore.size(), 1U);
}

} // namespace daylark
