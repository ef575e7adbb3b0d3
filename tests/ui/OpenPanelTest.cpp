#include "ui/desktop/DesktopBus.h"
#include "ui/desktop/DesktopPanels.h"

#include "app/adding/MediaWalk.h"
#include "support/PlayerBench.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <gtest/gtest.h>

#include <functional>

namespace daylark {

using namespace Qt::StringLiterals;
using bench::waitUntil;

/// The panel that media are chosen in, on a folder of pictures of every kind.
class OpenPanelTest : public ::testing::Test {
protected:
    void SetUp() override {
        media.title = u"Choose Media Files To Add"_s;
        media.typesTitle = u"Media Files"_s;
        media.allowedTypes = {u"mov"_s, u"exr"_s, u"png"_s};
        media.allowMultiple = true;
        media.runsAreOne = true;
        for (int number = 1001; number <= 1024; ++number)
            if (number != 1009) write(u"sh010.%1.exr"_s.arg(number));
        for (const char* name : {"a_08.png", "a_09.png", "a_10.png", "poster.png", "clip.mov", "notes.txt"})
            write(QString::fromLatin1(name));
        QDir(folder.path()).mkdir(u"day.png"_s);
    }
    void write(const QString& name) const {
        QFile made(folder.filePath(name));
        ASSERT_TRUE(made.open(QIODevice::WriteOnly) && made.write(QByteArray(1000, ' ')) == 1000);
    }
    static QStringList names(const QTreeView& files) {
        QStringList shown;
        for (int row = 0; row < files.model()->rowCount(files.rootIndex()); ++row)
            shown << files.model()->index(row, 0, files.rootIndex()).data().toString();
        return shown;
    }
    static QModelIndex lineOf(const QTreeView& files, const QString& name) {
        const auto row = names(files).indexOf(name);
        return row < 0 ? QModelIndex() : files.model()->index(int(row), 0, files.rootIndex());
    }
    QString run(int last = 1024) const { return u"sh010.1001-%1#.exr"_s.arg(last); }

    /// What the panel answers after `act`; one that is still open then is cancelled.
    QStringList asking(const std::function<void(QFileDialog&, QTreeView&)>& act) {
        QTimer looking;
        QObject::connect(&looking, &QTimer::timeout, &looking, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog) return;
            looking.stop();
            dialog->setDirectory(folder.path());
            auto* files = dialog->findChild<QTreeView*>(u"treeView"_s);
            if (!waitUntil([&] { return names(*files).contains(u"poster.png"_s) && names(*files).contains(u"a_10.png"_s) ==
                                                                                       !media.runsAreOne; }))
                ADD_FAILURE() << names(*files).join(u' ').toStdString();
            act(*dialog, *files);
            EXPECT_TRUE(waitUntil([&] { return !dialog->isVisible() || !waits; }, 6000))
                << dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text().toStdString();
            if (dialog->isVisible()) dialog->reject();
        });
        looking.start(20);
        return panels.runOpen(media);
    }
    /// Types it as a person does, and presses Return.
    QStringList typing(const QString& text, const QString& chosenBefore = {}) {
        return asking([&](QFileDialog& dialog, QTreeView& files) {
            if (!chosenBefore.isNull())
                QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, files.visualRect(lineOf(files, chosenBefore)).center());
            auto* field = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
            dialog.activateWindow();
            field->setFocus();
            EXPECT_TRUE(waitUntil([&] { return field->hasFocus(); })); // the toolkit's field goes by that
            field->selectAll();
            QTest::keyClicks(field, text);
            QTest::keyClick(field, Qt::Key_Return);
        });
    }
    /// The runs that the paths are added as: "1001-1024 of 1", the last the number of items.
    static std::string added(const QStringList& paths) {
        const auto found = mediaAmong(paths, {false, true}, {});
        if (found.empty() || !found.front().run) return "none of " + paths.join(u' ').toStdString();
        const FrameRun& run = found.front().run->run;
        return u"%1-%2 of %3"_s.arg(run.first).arg(run.last).arg(found.size()).toStdString();
    }

    QTemporaryDir folder;
    DesktopBus none{u"unix:path=/nowhere/at/all"_s};
    DesktopPanels panels{none};
    OpenPanel media;
    bool waits = true;
};

TEST_F(OpenPanelTest, ARunIsOneLineWithAllItsPicturesSizeAndTheNewestOnesTime) {
    const QDateTime newest(QDate(2031, 5, 6), QTime(7, 8));
    QFile late(folder.filePath(u"sh010.1020.exr"_s));
    ASSERT_TRUE(late.open(QIODevice::ReadWrite) && late.setFileTime(newest, QFileDevice::FileModificationTime));
    late.close();
    waits = false;
    EXPECT_TRUE(asking([&](QFileDialog&, QTreeView& files) {
                    const QStringList lines{u"day.png"_s, u"a_08-10@@.png"_s, u"clip.mov"_s, u"poster.png"_s, run()};
                    EXPECT_TRUE(waitUntil([&] { return names(files) == lines; })) << names(files).join(u' ').toStdString();
                    const auto text = [&](int column) {
                        return lineOf(files, run()).siblingAtColumn(column).data().toString();
                    };
                    EXPECT_TRUE(waitUntil([&] { return text(1) == QLocale::system().formattedDataSize(23 * 1000); }))
                        << text(1).toStdString();
                    EXPECT_EQ(text(3), QLocale::system().toString(newest, QLocale::ShortFormat));
                    files.sortByColumn(1, Qt::DescendingOrder);
                    EXPECT_EQ(names(files).front(), run()) << "by the size of all";
                    files.sortByColumn(0, Qt::AscendingOrder);
                    write(u"sh010.1025.exr"_s); // still being rendered
                    EXPECT_TRUE(waitUntil([&] { return names(files).contains(run(1025)); }));
                    EXPECT_TRUE(waitUntil([&] { return text(1).isEmpty() && names(files).size() == 5; }));
                    QFile::remove(folder.filePath(u"sh010.1001.exr"_s));
                    EXPECT_TRUE(waitUntil([&] { return names(files).contains(u"sh010.1002-1025#.exr"_s); }));
                }).isEmpty());
    media.runsAreOne = false;
    EXPECT_TRUE(asking([&](QFileDialog&, QTreeView& files) {
                    EXPECT_TRUE(waitUntil([&] { return names(files).size() == 24 - 1 + 6; })) << names(files).size();
                }).isEmpty());
}

TEST_F(OpenPanelTest, ALineThatIsChosenIsAddedAsOneRun) {
    const auto choosing = [&](const QStringList& lines) {
        return asking([&](QFileDialog& dialog, QTreeView& files) {
            for (const QString& each : lines) {
                const auto held = each == lines.front() ? Qt::NoModifier : Qt::ControlModifier;
                QTest::mouseClick(files.viewport(), Qt::LeftButton, held, files.visualRect(lineOf(files, each)).center());
            }
            EXPECT_TRUE(dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->text().contains(lines.front()));
            for (QPushButton* each : dialog.findChildren<QPushButton*>())
                if (each->isDefault()) return each->click();
        });
    };
    const QStringList one = choosing({run()});
    EXPECT_EQ(one, QStringList{folder.filePath(u"sh010.1001.exr"_s)});
    EXPECT_EQ(added(one), "1001-1024 of 1");
    EXPECT_EQ(added(choosing({run(), u"a_08-10@@.png"_s, u"clip.mov"_s})), "1001-1024 of 3");
}

TEST_F(OpenPanelTest, ANameWithMarksMeansARunAndOneThatMeansNoneIsSaidToBe) {
    for (const char* text : {"sh010.####.exr", "sh010.%04d.exr", "sh010.1001-1024#.exr"})
        EXPECT_EQ(added(typing(QString::fromLatin1(text))), "1001-1024 of 1") << text;
    EXPECT_EQ(added(typing(folder.filePath(u"sh010.1003-1012#.exr"_s))), "1003-1012 of 1");
    EXPECT_EQ(added(typing(u"a_@@.png"_s, run())), "8-10 of 1") << "whatever was chosen before";
    EXPECT_EQ(added(typing(u"\"sh010.####.exr\" \"clip.mov\""_s)), "1001-1024 of 2");

    QString said;
    QTimer dismiss;
    QObject::connect(&dismiss, &QTimer::timeout, &dismiss, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        said = box->text();
        waits = false; // the panel stands open again
        box->buttons().front()->click();
    });
    dismiss.start(20);
    EXPECT_TRUE(typing(u"sh020.####.exr"_s).isEmpty());
    EXPECT_TRUE(said.contains(u"sh020.####.exr"_s)) << said.toStdString();
}

} // namespace daylark
