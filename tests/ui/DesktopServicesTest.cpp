#include "ui/desktop/DesktopBus.h"
#include "ui/desktop/DesktopPanels.h"
#include "ui/desktop/PortalFileChooser.h"

#include "support/PlayerBench.h"

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDesktopServices>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace daylark {

using namespace Qt::StringLiterals;
using bench::waitUntil;

struct AnsweredChoice {
    QString id, word;
};

static QDBusArgument& operator<<(QDBusArgument& out, const AnsweredChoice& choice) {
    out.beginStructure();
    out << choice.id << choice.word;
    out.endStructure();
    return out;
}
static const QDBusArgument& operator>>(const QDBusArgument& in, AnsweredChoice& choice) {
    in.beginStructure();
    in >> choice.id >> choice.word;
    in.endStructure();
    return in;
}

} // namespace daylark

Q_DECLARE_METATYPE(daylark::AnsweredChoice)

namespace daylark {

/// A portal that answers what the test says, a moment after it was asked.
class ScriptedPortal : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")
    Q_PROPERTY(uint version READ version CONSTANT)
public:
    ScriptedPortal(QDBusConnection bus, QObject* object)
        : QDBusAbstractAdaptor(object)
        , bus_(std::move(bus)) {
        qDBusRegisterMetaType<AnsweredChoice>();
        qDBusRegisterMetaType<QList<AnsweredChoice>>();
    }
    [[nodiscard]] uint version() const { return 3; }

    struct Question {
        QString method, title;
        QVariantMap options;
    };
    std::vector<Question> asked;
    uint code = 0;
    bool silent = false;
    QStringList uris;
    QString choice;
    std::function<void()> whileOpen;

public Q_SLOTS:
    QDBusObjectPath OpenFile(const QString&, const QString& title, const QVariantMap& options, const QDBusMessage& call) {
        return answer({u"OpenFile"_s, title, options}, call.service());
    }
    QDBusObjectPath SaveFile(const QString&, const QString& title, const QVariantMap& options, const QDBusMessage& call) {
        return answer({u"SaveFile"_s, title, options}, call.service());
    }

private:
    QDBusObjectPath answer(const Question& question, const QString& caller) {
        asked.push_back(question);
        const QString path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
            QString(caller).remove(0, 1).replace(u'.', u'_'), question.options.value(u"handle_token"_s).toString());
        QTimer::singleShot(20, this, [this, path, caller] {
            if (whileOpen) whileOpen();
            if (silent) return;
            QVariantMap results{{u"uris"_s, uris}};
            if (!choice.isNull())
                results[u"choices"_s] = QVariant::fromValue(QList<AnsweredChoice>{{u"choice"_s, choice}});
            QDBusMessage response = QDBusMessage::createTargetedSignal(
                caller, path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
            response << code << results;
            bus_.send(response);
        });
        return QDBusObjectPath(path);
    }

    QDBusConnection bus_;
};

class ScriptedFileManager : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    explicit ScriptedFileManager(QObject* object)
        : QDBusAbstractAdaptor(object) {}
    QStringList shown;
public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString&) { shown = uris; }
};

/// Takes the folders that are opened where no file manager answers.
class FolderOpener : public QObject {
    Q_OBJECT
public:
    FolderOpener() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~FolderOpener() override { QDesktopServices::unsetUrlHandler(u"file"_s); }
    QStringList opened;
public Q_SLOTS:
    void open(const QUrl& url) { opened << url.toLocalFile(); }
};

/// A message bus of its own, with what of a desktop the test puts there.
class DesktopServicesTest : public ::testing::Test {
protected:
    void SetUp() override {
        daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s,
                                        u"--address=unix:dir="_s + folder.path()});
        ASSERT_TRUE(daemon.waitForReadyRead(20000));
        address = QString::fromLocal8Bit(daemon.readLine()).trimmed();
        services = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address, u"services"_s));
        ASSERT_TRUE(services->isConnected());
    }
    void TearDown() override {
        bus.reset();
        services.reset();
        QDBusConnection::disconnectFromBus(u"services"_s);
        daemon.terminate();
        daemon.waitForFinished(20000);
    }
    void offerPortal() {
        portal = new ScriptedPortal(*services, &portalObject);
        ASSERT_TRUE(services->registerObject(u"/org/freedesktop/portal/desktop"_s, &portalObject));
        ASSERT_TRUE(services->registerService(u"org.freedesktop.portal.Desktop"_s));
    }
    void connectToBus() {
        bus = std::make_unique<DesktopBus>(address);
        EXPECT_FALSE(bus->connection().has_value()) << "nobody waited for it";
        ASSERT_TRUE(waitUntil([this] { return bus->connection().has_value(); }));
    }
    QString file(const QString& name) const { return folder.filePath(name); }

    QTemporaryDir folder;
    QProcess daemon;
    QString address;
    QObject portalObject, managerObject;
    std::unique_ptr<QDBusConnection> services;
    ScriptedPortal* portal = nullptr;
    std::unique_ptr<DesktopBus> bus;
};

TEST_F(DesktopServicesTest, ThePortalIsAskedInItsOwnStructuresAndItsAnswerTaken) {
    offerPortal();
    connectToBus();
    ASSERT_TRUE(waitUntil([this] { return bus->fileChooserVersion() == 3; }));
    portal->uris = {QUrl::fromLocalFile(file(u"Dé j 100%.csv"_s)).toString(QUrl::FullyEncoded)};
    portal->choice = u"RTF"_s;
    bool modal = false;
    portal->whileOpen = [&modal] { modal = QApplication::activeModalWidget() != nullptr; };
    PortalFileChooser chooser(*bus->connection());
    PortalFileChooser::Request request;
    request.save = true;
    request.title = u"Save"_s;
    request.accept = u"Export"_s;
    request.name = u"notes.csv"_s;
    request.folder = folder.path();
    request.patterns = QStringList{u"*.csv"_s, u"*.rtf"_s};
    request.choiceLabel = u"Format"_s;
    request.choices = QStringList{u"CSV"_s, u"RTF"_s};
    request.choice = u"CSV"_s;
    const auto answer = chooser.run(request, nullptr);
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->paths, QStringList{file(u"Dé j 100%.csv"_s)});
    EXPECT_EQ(answer->choice, u"RTF"_s);
    EXPECT_TRUE(modal) << "the windows have to wait";
    ASSERT_EQ(portal->asked.size(), 1U);
    const QVariantMap options = portal->asked[0].options;
    EXPECT_EQ(portal->asked[0].method, u"SaveFile"_s);
    EXPECT_EQ(options[u"accept_label"_s], u"Export"_s);
    EXPECT_EQ(options[u"current_folder"_s].toByteArray(), QFile::encodeName(folder.path()).append('\0'));
    EXPECT_EQ(options[u"filters"_s].value<QDBusArgument>().currentSignature(), u"a(sa(us))"_s);
    EXPECT_EQ(options[u"choices"_s].value<QDBusArgument>().currentSignature(), u"a(ssa(ss)s)"_s);

    portal->code = 1; // cancelled
    const auto cancelled = chooser.run({}, nullptr);
    ASSERT_TRUE(cancelled.has_value());
    EXPECT_TRUE(cancelled->paths.isEmpty());
    portal->code = 0; // somewhere that is no file here: the program's own dialog is to ask
    portal->uris = {u"sftp://server/notes.csv"_s};
    EXPECT_FALSE(chooser.run({}, nullptr).has_value());
    portal->whileOpen = [this] { services->unregisterService(u"org.freedesktop.portal.Desktop"_s); };
    portal->silent = true;
    EXPECT_FALSE(chooser.run({}, nullptr).has_value()) << "it went away while its dialog was open";
    EXPECT_FALSE(chooser.run({}, nullptr).has_value()) << "it isn't there any more";
}

TEST_F(DesktopServicesTest, PanelsAskThePortalAndFallBackOnTheirOwnDialog) {
    if (QGuiApplication::platformName() != u"xcb"_s) GTEST_SKIP() << "needs windows";
    offerPortal();
    connectToBus();
    ASSERT_TRUE(waitUntil([this] { return bus->fileChooserVersion() == 3; }));
    DesktopPanels panels(*bus);
    SavePanel save;
    save.title = u"Save Notes"_s;
    save.proposedName = u"day_notes.csv"_s;
    save.allowedTypes = QStringList{u"csv"_s, u"rtf"_s};
    save.accessoryLabel = u"Format"_s;
    save.accessoryTitles = QStringList{u"CSV"_s, u"RTF"_s};
    save.accessoryCurrent = u"CSV"_s;
    save.accessoryChosen = [](const QString&, const QString& name) { return QString(name).replace(u".csv"_s, u".rtf"_s); };
    portal->uris = {QUrl::fromLocalFile(file(u"mine.csv"_s)).toString()};
    portal->choice = u"RTF"_s;
    EXPECT_EQ(panels.runSave(save), file(u"mine.rtf"_s)) << "as the dialog's own choice would have named it";
    portal->choice = u"CSV"_s;
    portal->uris = {QUrl::fromLocalFile(file(u"mine"_s)).toString()};
    EXPECT_EQ(panels.runSave(save), file(u"mine.csv"_s));
    OpenPanel open;
    open.title = u"Folder"_s;
    open.chooseFiles = false;
    open.chooseFolders = true;
    EXPECT_EQ(panels.runOpen(open), QStringList{file(u"mine"_s)});
    EXPECT_TRUE(portal->asked.back().options.value(u"directory"_s).toBool());

    ASSERT_TRUE(services->unregisterService(u"org.freedesktop.portal.Desktop"_s));
    QTimer::singleShot(200, [] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        dialog->reject();
    });
    EXPECT_TRUE(panels.runOpen(open).isEmpty());
}

TEST_F(DesktopServicesTest, AFolderThatPassesForAFileIsChosenAndNotEntered) {
    DesktopBus none(u"unix:path=/nowhere/at/all"_s);
    DesktopPanels panels(none);
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"clip.dlm"_s) && QDir(folder.path()).mkdir(u"other"_s));
    SavePanel save;
    save.title = u"Export"_s;
    save.nameLabel = u"Export As"_s;
    save.allowedTypes = QStringList{u"dlm"_s};
    save.package = true;
    QStringList labels;
    int questions = 0;
    const auto answer = [&](const QString& name, int button) {
        QObject here; // what isn't asked any more is not answered later
        QTimer::singleShot(200, &here, [&labels, name] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            labels << dialog->labelText(QFileDialog::FileName);
            dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(name);
            QTest::keyClick(dialog->findChild<QLineEdit*>(u"fileNameEdit"_s), Qt::Key_Return);
            if (QApplication::activeModalWidget() == dialog) dialog->reject(); // it went into the folder
        });
        QTimer::singleShot(600, &here, [&questions, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            ++questions;
            box->buttons().value(button)->click();
        });
        return panels.runSave(save);
    };
    EXPECT_EQ(answer(file(u"clip"_s), 0), file(u"clip.dlm"_s));
    EXPECT_EQ(answer(file(u"new"_s), 0), file(u"new.dlm"_s));
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(labels.value(0), u"Export As"_s);
    EXPECT_EQ(answer(file(u"clip.dlm"_s), 1), QString()) << "not agreed to";
    save.package = false;
    EXPECT_EQ(answer(file(u"clip.dlm"_s), 0), QString()) << "any other folder is entered";
}

TEST_F(DesktopServicesTest, TheNextDialogBeginsWhereTheLastAnswerLies) {
    DesktopBus none(u"unix:path=/nowhere/at/all"_s);
    DesktopPanels panels(none);
    QDir(folder.path()).mkpath(u"typed/deep"_s);
    QFile written(file(u"typed/deep/a.wav"_s));
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    written.close();
    QStringList begun;
    bool makesFolders = true;
    const auto typing = [&](const QString& name) {
        QTimer::singleShot(200, [&, name] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            begun << dialog->directory().absolutePath();
            makesFolders = !dialog->testOption(QFileDialog::ReadOnly);
            auto* field = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s);
            field->setText(name);
            QTest::keyClick(field, Qt::Key_Return);
            if (QApplication::activeModalWidget() == dialog) dialog->reject();
        });
    };
    SavePanel save;
    save.title = u"Save"_s;
    typing(file(u"typed/deep/new.csv"_s));
    EXPECT_EQ(panels.runSave(save), file(u"typed/deep/new.csv"_s));
    EXPECT_TRUE(makesFolders);
    OpenPanel open;
    open.title = u"Open"_s;
    typing(file(u"typed/deep/a.wav"_s));
    EXPECT_EQ(panels.runOpen(open), QStringList{file(u"typed/deep/a.wav"_s)});
    EXPECT_FALSE(makesFolders);
    typing(file(u"typed"_s));
    EXPECT_EQ(panels.chooseFolder(u"Folder"_s), file(u"typed"_s));
    EXPECT_TRUE(makesFolders);
    typing({});
    EXPECT_EQ(panels.runSave(save), QString());
    EXPECT_EQ(begun, (QStringList{QDir::homePath(), file(u"typed/deep"_s), file(u"typed/deep"_s), folder.path()}));
}

TEST_F(DesktopServicesTest, ThePanelShowsMediaInColumnsThatAreWholeAndEverythingOnRequest) {
    DesktopBus none(u"unix:path=/nowhere/at/all"_s);
    DesktopPanels panels(none);
    const QString longest = u"DAY12_SC012_SH0420_comp_main_v003.MOV"_s;
    for (const QString& name : {longest, u"notes.txt"_s}) {
        QFile made(file(name));
        ASSERT_TRUE(made.open(QIODevice::WriteOnly));
    }
    QDir(folder.path()).mkpath(u"day one"_s);
    OpenPanel media;
    media.title = u"Choose Media Files To Add"_s;
    media.typesTitle = u"Media Files"_s;
    media.allowedTypes = {u"mov"_s, u"mxf"_s};
    media.allowMultiple = true;
    const auto looking = [&](auto look) {
        QTimer::singleShot(300, [this, look] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            dialog->setDirectory(folder.path());
            auto* files = dialog->findChild<QTreeView*>(u"treeView"_s);
            const auto names = [files] {
                QStringList shown;
                for (int row = 0; row < files->model()->rowCount(files->rootIndex()); ++row)
                    shown << files->model()->index(row, 0, files->rootIndex()).data().toString();
                shown.sort();
                return shown;
            };
            look(*dialog, *files, names);
            dialog->reject();
        });
    };
    looking([&](QFileDialog& dialog, QTreeView& files, auto names) {
        EXPECT_TRUE(waitUntil([&] { return names().contains(longest); }));
        EXPECT_EQ(names(), (QStringList{longest, u"day one"_s})) << "media first, in whatever case";
        const QFontMetrics metrics(files.font());
        EXPECT_GT(files.columnWidth(0), metrics.horizontalAdvance(longest));
        for (int column = 1; column < files.header()->count(); ++column)
            EXPECT_GE(files.columnWidth(column),
                      metrics.horizontalAdvance(files.model()->headerData(column, Qt::Horizontal).toString()));
        EXPECT_LE(files.header()->length(), files.viewport()->width()) << "nothing to scroll for";
        ASSERT_EQ(dialog.nameFilters().size(), 2);
        dialog.selectNameFilter(dialog.nameFilters().back());
        EXPECT_TRUE(waitUntil([&] { return names().contains(u"notes.txt"_s); }));
    });
    EXPECT_TRUE(panels.runOpen(media).isEmpty());
    looking([&](QFileDialog& dialog, QTreeView&, auto names) {
        EXPECT_TRUE(waitUntil([&] { return names().contains(u"day one"_s); }));
        EXPECT_EQ(names(), QStringList{u"day one"_s});
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        EXPECT_EQ(dialog.labelText(QFileDialog::Accept), u"Add Folder"_s);
    });
    EXPECT_TRUE(panels.runOpen(OpenPanel::forFolders(u"Choose Folders To Add"_s, u"Add Folder"_s)).isEmpty());
}

TEST_F(DesktopServicesTest, FilesAreShownByTheFileManagerElseTheirFolderIsOpened) {
    FolderOpener opener;
    DesktopBus none(u"unix:path=/nowhere/at/all"_s);
    DesktopFileBrowser(none).reveal({file(u"a b.mov"_s)});
    EXPECT_EQ(opener.opened, QStringList{folder.path()});

    connectToBus();
    DesktopFileBrowser browser(*bus);
    browser.reveal({file(u"a b.mov"_s)});
    ASSERT_TRUE(waitUntil([&opener] { return opener.opened.size() == 2; })) << "nobody answered";
    auto* manager = new ScriptedFileManager(&managerObject);
    ASSERT_TRUE(services->registerObject(u"/org/freedesktop/FileManager1"_s, &managerObject));
    ASSERT_TRUE(services->registerService(u"org.freedesktop.FileManager1"_s));
    browser.reveal({file(u"a b.mov"_s), file(u"c.mov"_s)});
    ASSERT_TRUE(waitUntil([manager] { return !manager->shown.isEmpty(); }));
    EXPECT_EQ(manager->shown, (QStringList{QUrl::fromLocalFile(file(u"a b.mov"_s)).toString(QUrl::FullyEncoded),
                                           QUrl::fromLocalFile(file(u"c.mov"_s)).toString(QUrl::FullyEncoded)}));
    EXPECT_EQ(opener.opened.size(), 2);
}

} // namespace daylark

#include "DesktopServicesTest.moc"
