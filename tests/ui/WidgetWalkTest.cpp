#include "app/PlaylistController.h"
#include "preferences/Preferences.h"
#include "support/MovieMaker.h"
#include "support/PlayerBench.h"
#include "ui/desktop/DesktopProgram.h"
#include "ui/library/ItemsPane.h"
#include "ui/library/LibraryWindow.h"
#include "ui/library/PlaylistsPane.h"
#include "ui/preferences/PreferencesWindow.h"
#include "ui/viewer/ViewerWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace daylark {
namespace {

using namespace Qt::StringLiterals;
using bench::waitUntil;

/// A day's session of forty shots through the whole program's windows, on whatever screen, in whatever language and size of
/// text the environment asks for; in every state all that is on screen is looked at.
class WidgetWalkTest : public ::testing::Test {
protected:
    void SetUp() override {
        const int points = qEnvironmentVariableIntValue("DAYLARK_TEST_FONT_PERCENT");
        if (points > 0) {
            QFont font = QApplication::font();
            font.setPointSizeF(font.pointSizeF() * points / 100.0);
            QApplication::setFont(font);
        }
        Preferences preferences(file(u"preferences.ini"_s));
        preferences.language.set(qEnvironmentVariable("DAYLARK_TEST_LANGUAGE", u"en"_s));
        preferences.hideMainWindowWhenPlayerLaunches.set(false);
        preferences.synchronise();
        MovieSpec spec;
        spec.size = {128, 72};
        spec.frames = 24;
        for (int shot = 0; shot < 40; ++shot) {
            const QString folder = file(u"DAY_%1_SC01%2"_s.arg(shot / 14 + 11).arg(shot / 14));
            QDir().mkpath(folder);
            spec.path = folder + u"/DAY12_SC012_SH%1_comp_main_v%2.mov"_s
                                     .arg(shot * 10, 4, 10, QLatin1Char('0')).arg(shot % 7, 3, 10, QLatin1Char('0'));
            spec.timecode = shot % 2 ? u"01:00:00:00"_s : QString();
            spec.sound = shot % 3 == 0;
            if (shot < 4) {
                ASSERT_TRUE(makeMovie(spec));
            } else {
                ASSERT_TRUE(QFile::copy(first_, spec.path));
            }
            if (shot == 0) first_ = spec.path;
        }
        SystemPlaces places{u"mia"_s, file(u"support"_s), file(u"cache/Daylark"_s)};
        QDir().mkpath(places.applicationSupport);
        program_ = std::make_unique<DesktopProgram>(DesktopProgram::Places{file(u"preferences.ini"_s), places});
        QStringList folders;
        for (const QString& name : QDir(home_.path()).entryList({u"DAY_*"_s}, QDir::Dirs)) folders << file(name);
        program_->start(folders);
        ASSERT_TRUE(waitUntil([this] { return items() == 40 && controller().thumbnails().isIdle(); }));
    }
    [[nodiscard]] qsizetype items() {
        qsizetype count = 0;
        for (const auto& playlist : controller().library().playlists())
            count += qsizetype(playlist->movieList.size());
        return count;
    }
    [[nodiscard]] QString file(const QString& name) const { return home_.filePath(name); }
    PlaylistController& controller() { return program_->controller(); }
    LibraryWindow& library() { return program_->libraryWindow(); }
    ViewerWindow& viewer() { return program_->viewerWindow(); }
    void trigger(QWidget& window, const char* id) {
        auto* action = window.findChild<QAction*>(QLatin1String(id));
        ASSERT_TRUE(action) << id;
        action->trigger();
    }

    /// Looks at every window on screen.
    void look(const QString& state) {
        QTest::qWait(250); // layouts settle, what fades is there
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible() || window->windowType() == Qt::ToolTip) continue;
            lookAtWindow(*window, state);
            for (QWidget* widget : window->findChildren<QWidget*>())
                if (widget->isVisible() && widget->window() == window && !widget->visibleRegion().isEmpty())
                    lookAt(*widget, state);
        }
    }
    void fault(const QString& state, const QString& what) {
        if (seen_.insert(what).second) faults_ << state + u": "_s + what;
    }
    static QString nameOf(const QWidget& widget) {
        QString name = QLatin1String(widget.metaObject()->className());
        for (const QWidget* each = &widget; each; each = each->parentWidget())
            if (!each->objectName().isEmpty()) return name + u" in "_s + each->objectName();
        return name;
    }

private:
    void lookAtWindow(const QWidget& window, const QString& state) {
        const QRect free = window.screen()->availableGeometry();
        if (!free.contains(window.frameGeometry()))
            fault(state, u"outside the screen: %1 %2x%3 at %4,%5"_s.arg(nameOf(window))
                             .arg(window.width()).arg(window.height()).arg(window.x()).arg(window.y()));
    }
    void lookAt(const QWidget& widget, const QString& state) {
        lookForCutText(widget, state);
        const bool isPart = qobject_cast<const QScrollBar*>(&widget) || widget.objectName().startsWith(u"qt_"_s) ||
                            widget.inherits("QTabBar") || widget.inherits("QToolBarExtension") ||
                            (widget.parentWidget() && (widget.parentWidget()->inherits("QAbstractSpinBox") ||
                                                       widget.parentWidget()->inherits("QComboBox") ||
                                                       widget.parentWidget()->inherits("QLineEdit") ||
                                                       widget.parentWidget()->inherits("QTableView") ||
                                                       widget.parentWidget()->inherits("QTreeView")));
        if (isPart) return;
        const auto* button = qobject_cast<const QAbstractButton*>(&widget);
        const bool isControl = button || qobject_cast<const QComboBox*>(&widget) ||
                               qobject_cast<const QAbstractSlider*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
                               qobject_cast<const QAbstractSpinBox*>(&widget) || qobject_cast<const QTextEdit*>(&widget) ||
                               qobject_cast<const QAbstractItemView*>(&widget);
        if (!isControl) return;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
        if (!told || told->text(QAccessible::Name).isEmpty()) fault(state, u"without a name: "_s + nameOf(widget));
        if (button && button->text().isEmpty() && button->toolTip().isEmpty())
            fault(state, u"an icon without a tool tip: "_s + nameOf(widget));
    }
    /// A text that needs more room than it has; what is meant to be elided is drawn by its delegate and not here.
    void lookForCutText(const QWidget& widget, const QString& state) {
        QString text;
        int needed = 0, room = widget.width();
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            const bool mayBeCut = label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
            if (label->wordWrap() || label->text().isEmpty() || mayBeCut) return;
            text = label->text();
            needed = label->sizeHint().width();
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            if (button->text().isEmpty()) return;
            if (const auto* tool = qobject_cast<const QToolButton*>(button))
                if (tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !tool->icon().isNull()) return;
            text = button->text();
            needed = button->sizeHint().width();
        } else if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
            text = box->currentText();
            needed = box->fontMetrics().horizontalAdvance(text) + 24;
        } else if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
            if (header->orientation() == Qt::Vertical) return;
            for (int section = 0; section < header->count(); ++section) {
                const QString title = header->model()->headerData(section, Qt::Horizontal).toString();
                if (!header->isSectionHidden(section) && !title.isEmpty() &&
                    header->fontMetrics().horizontalAdvance(title) + 8 > header->sectionSize(section))
                    fault(state, u"cut: “%1” in a header of %2"_s.arg(title, nameOf(widget)));
            }
            return;
        }
        if (needed > room + 1)
            fault(state, u"cut: “%1” (%2 of %3) in %4"_s.arg(text).arg(room).arg(needed).arg(nameOf(widget)));
    }

protected:
    QTemporaryDir home_;
    QString first_;
    std::unique_ptr<DesktopProgram> program_;
    QStringList faults_;
    std::set<QString> seen_;
};

/// Whatever fits no screen as small as this, with the reason.
bool isAllowed(const QString& fault) {
    static const QStringList allowed{
        u"“Description” in a header"_s, // gives way to the numbers beside it in a narrow panel
    };
    return std::any_of(allowed.begin(), allowed.end(), [&fault](const QString& each) { return fault.contains(each); });
}

TEST_F(WidgetWalkTest, ADaysSessionShowsNothingCutNothingNamelessAndNothingOutsideTheScreen) {
    if (QGuiApplication::platformName() == u"offscreen"_s)
        GTEST_SKIP() << "a screen smaller than people have; on theirs it runs by itself";
    look(u"tiles"_s);
    controller().library().selectPlaylist(1);
    trigger(library(), "view.information");
    trigger(library(), "find.show");
    look(u"find and information"_s);
    trigger(library(), "view.list");
    controller().library().selectMovies({0, 1, 2});
    trigger(library(), "item.flag.901");
    look(u"list, three flagged"_s);
    trigger(library(), "app.preferences");
    PreferencesWindow& preferences = library().preferencesWindow();
    for (int page = 0; page < preferences.groups()->count(); ++page) {
        preferences.groups()->setCurrentRow(page);
        look(u"preferences: "_s + preferences.groups()->item(page)->text());
    }
    preferences.hide();
    trigger(library(), "session.newSmartlist");
    look(u"rules"_s);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"smartRulesPanel"_s) window->close();
    trigger(library(), "help.shortcuts");
    look(u"keys"_s);
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window != &library() && window != &viewer() && window->isVisible()) window->close();

    controller().library().selectPlaylist(0);
    controller().loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] { return viewer().isVisible(); }));
    look(u"viewer"_s);
    trigger(viewer(), "viewer.showAllPanels");
    look(u"viewer with its panels"_s);
    QStringList left;
    for (const QString& each : faults_)
        if (!isAllowed(each)) left << each;
    EXPECT_TRUE(left.isEmpty()) << left.join(u'\n').toStdString();
}

TEST_F(WidgetWalkTest, AKeyMeansOneCommandOfAWindowAndAFieldKeepsTheFocus) {
    controller().loadMovieWindow();
    ASSERT_TRUE(waitUntil([this] { return viewer().isVisible(); }));
    for (QMainWindow* window : {static_cast<QMainWindow*>(&library()), static_cast<QMainWindow*>(&viewer())}) {
        std::map<QString, QString> taken;
        for (const QAction* action : window->findChildren<QAction*>())
            for (const QKeySequence& key : action->shortcuts()) {
                QString& owner = taken[key.toString()];
                EXPECT_TRUE(owner.isEmpty() || owner == action->objectName())
                    << key.toString().toStdString() << ": " << owner.toStdString() << " and "
                    << action->objectName().toStdString();
                owner = action->objectName();
            }
        EXPECT_GT(taken.size(), 20u);
    }
    trigger(viewer(), "viewer.showAllPanels");
    QTest::qWait(100);
    // Playing over the end of a movie, with all that follows it, takes the keyboard from no field.
    for (QWidget* field : QApplication::allWidgets()) {
        const bool isField = qobject_cast<QLineEdit*>(field) || qobject_cast<QTextEdit*>(field);
        if (!isField || !field->isVisible() || !field->isEnabled() || field->focusPolicy() == Qt::NoFocus) continue;
        field->window()->activateWindow();
        field->setFocus();
        if (QApplication::focusWidget() != field) continue; // its window is no active one on this platform
        controller().playerWindow().transport().playMovieForwards();
        Q_EMIT controller().library().movieUpdated(controller().library().movieAt(0));
        QTest::qWait(150);
        controller().playerWindow().transport().pauseMovie();
        EXPECT_EQ(QApplication::focusWidget(), field) << nameOf(*field).toStdString();
    }
}

} // namespace
} // namespace daylark
