#include "ui/desktop/DesktopPanels.h"

#include "model/runs/FrameRun.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/desktop/DesktopBus.h"
#include "ui/desktop/PortalFileChooser.h"
#include "ui/desktop/RunLines.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QTextEdit>
#include <QTreeView>
#include <QUrl>

#include <algorithm>

namespace daylark {

namespace {

QStringList patternListOf(const QStringList& extensions) {
    QStringList patterns;
    for (const QString& extension : extensions)
        patterns << QStringLiteral("*.") + extension;
    return patterns;
}

/// The desktop's dialogs look at the case: a camera's "A001.MOV" is a movie, too.
QStringList patternsOfAnyCase(const QStringList& extensions) {
    QStringList patterns;
    for (const QString& extension : extensions) {
        QString pattern = QStringLiteral("*.");
        for (const QChar letter : extension)
            pattern += letter.isLetter() ? QStringLiteral("[%1%2]").arg(letter.toLower()).arg(letter.toUpper()) : QString(letter);
        patterns << pattern;
    }
    return patterns;
}

QString patternsOf(const QStringList& extensions) {
    return extensions.isEmpty() ? QStringLiteral("*") : patternListOf(extensions).join(QLatin1Char(' '));
}

/// The portal puts its dialogs on the desktop that the program's windows are on; without windows there is none.
bool portalServes(const DesktopBus& bus, uint version) {
    const QString platform = QGuiApplication::platformName();
    return (platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"))) && bus.connection() &&
           bus.fileChooserVersion() >= version;
}

QString startFolder(const QString& last) {
    return QFileInfo(last).isDir() ? last : QDir::homePath();
}

/// The panels' own widget, because the desktop's has no room for the accessory view.
void prepareDialog(QFileDialog& dialog, const QString& title, const QString& prompt, RunLines* runs = nullptr) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    if (runs) dialog.setProxyModel(runs); // before the columns, which belong to the model
    dialog.setWindowTitle(plain::windowTitle(title));
    if (!prompt.isEmpty()) dialog.setLabelText(QFileDialog::Accept, prompt);
    const QSize room = dialog.screen()->availableSize() - QSize(40, 80);
    dialog.resize(QSize(960, 560).boundedTo(room));
    dialog.setViewMode(QFileDialog::Detail);
    // The name takes what the other columns leave; these are as wide as what they say.
    if (auto* files = dialog.findChild<QTreeView*>(QStringLiteral("treeView"))) {
        QHeaderView* header = files->header();
        header->setStretchLastSection(false);
        for (int column = 0; column < header->count(); ++column)
            header->setSectionResizeMode(column, column == 0 ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
    }
}

void addAccessory(QFileDialog& dialog, const SavePanel& panel) {
    auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (panel.accessoryTitles.isEmpty() || !grid || !name) return;
    auto* choice = new QComboBox(&dialog);
    choice->addItems(panel.accessoryTitles);
    choice->setCurrentText(panel.accessoryCurrent);
    choice->setAccessibleName(panel.accessoryLabel);
    auto* label = new PlainLabel(panel.accessoryLabel, &dialog);
    label->setBuddy(choice);
    const int row = grid->rowCount();
    grid->addWidget(label, row, 0);
    grid->addWidget(choice, row, 1);
    QObject::connect(choice, &QComboBox::textActivated, &dialog,
                     [chosen = panel.accessoryChosen, name](const QString& title) {
                         if (!chosen) return;
                         name->setText(chosen(title, name->text()));
                         // What a name typed without one gets from now on.
                         static_cast<QFileDialog*>(name->window())->setDefaultSuffix(QFileInfo(name->text()).suffix());
                     });
}

/// A message box that can be closed without any of its buttons, which Qt's own lets nobody do.
class DismissibleBox : public QMessageBox {
public:
    DismissibleBox(bool dismissible, QWidget* parent)
        : QMessageBox(parent)
        , dismissible_(dismissible) {}

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (dismissible_ && event->matches(QKeySequence::Cancel))
            reject();
        else
            QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (dismissible_)
            QDialog::closeEvent(event);
        else
            QMessageBox::closeEvent(event);
    }

private:
    bool dismissible_;
};

} // namespace

int DesktopAlerts::run(const Alert& alert) {
    DismissibleBox box(alert.tellsDismissal, QApplication::activeWindow());
    box.setWindowTitle(plain::windowTitle(alert.subject.isEmpty() ? QGuiApplication::applicationDisplayName()
                                                                  : plain::line(alert.subject)));
    // They may hold what a stranger wrote: shown letter by letter, blanks in a row too.
    const QString asWritten = QStringLiteral("<%1 style=\"white-space: pre-wrap\">%2</%1>");
    box.setText(asWritten.arg(QStringLiteral("b"), plain::markUp(alert.message)));
    if (!alert.informativeText.isEmpty())
        box.setInformativeText(asWritten.arg(QStringLiteral("span"), plain::markUp(alert.informativeText)));
    const bool warning = alert.style == AlertStyle::warning;
    box.setIconPixmap(theme::icon(warning ? QStringLiteral("warning") : QStringLiteral("info"))
                          .pixmap(QSize(32, 32), box.devicePixelRatio()));
    const QStringList titles = alert.buttons.isEmpty() ? QStringList{QStringLiteral("OK")} : alert.buttons;
    std::vector<QAbstractButton*> buttons;
    for (qsizetype at = 0; at < titles.size(); ++at) {
        const bool last = at + 1 == titles.size() && titles.size() > 1;
        const auto role = at == 0 || alert.tellsDismissal ? QMessageBox::AcceptRole
                          : last                          ? QMessageBox::RejectRole
                                                          : QMessageBox::ActionRole;
        buttons.push_back(box.addButton(plain::menuTitle(titles[at]), role));
    }
    const int standard = std::clamp(alert.defaultButton, 0, int(buttons.size()) - 1);
    box.setDefaultButton(static_cast<QPushButton*>(buttons[size_t(standard)]));
    if (!alert.tellsDismissal) box.setEscapeButton(buttons.back());
    if (!alert.details.isEmpty()) {
        box.setDetailedText(alert.details); // with a button of its own
        if (auto* details = box.findChild<QTextEdit*>()) details->setMinimumSize(480, 120); // they hold paths
    }
    // Last: texts lay the box out anew.
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()); grid && !alert.subject.isEmpty()) {
        // Wide enough for its title, beside which the frame has buttons and the program's name.
        constexpr int besideTitle = 220, most = 720;
        const int title = box.fontMetrics().horizontalAdvance(box.windowTitle()) + besideTitle;
        grid->addItem(new QSpacerItem(std::min(title, most), 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
    box.exec();
    for (size_t at = 0; at < buttons.size(); ++at)
        if (box.clickedButton() == buttons[at]) return firstButton + int(at);
    return alert.tellsDismissal ? dismissed : firstButton + int(buttons.size()) - 1;
}

namespace {

bool replaceAgreed(const QString& path) {
    DesktopAlerts alerts;
    return alerts.run({QCoreApplication::translate("DesktopPanels", "“%1” already exists.").arg(QFileInfo(path).fileName()),
                       QCoreApplication::translate("DesktopPanels", "Replacing it will overwrite what it holds."),
                       {QCoreApplication::translate("DesktopPanels", "Replace"),
                        QCoreApplication::translate("DesktopPanels", "Cancel")},
                       AlertStyle::warning}) == Alerts::firstButton;
}

/// Takes an existing folder of the wanted type for the file that it is to a person; the toolkit's dialog would enter it.
class SaveDialog : public QFileDialog {
public:
    SaveDialog(const SavePanel& panel, QWidget* parent)
        : QFileDialog(parent)
        , packageTypes_(panel.package ? panel.allowedTypes : QStringList()) {}

protected:
    void accept() override {
        const QFileInfo chosen(selectedFiles().value(0));
        if (!chosen.isDir() || !packageTypes_.contains(chosen.suffix(), Qt::CaseInsensitive))
            QFileDialog::accept();
        else if (replaceAgreed(chosen.filePath()))
            QDialog::accept();
    }

private:
    QStringList packageTypes_;
};

/// Takes a name with marks in it ("sh010.####.exr") for the run that it means.
class RunDialog : public QFileDialog {
public:
    RunDialog(RunLines* runs, QWidget* parent)
        : QFileDialog(parent)
        , runs_(runs) {
        if (runs) runs->setParent(this);
    }

    /// What was chosen or typed.
    [[nodiscard]] QStringList answer() const { return typed_.isEmpty() ? selectedFiles() : typed_; }

protected:
    void accept() override {
        const QStringList paths = runs_ ? namesWithMarks() : QStringList();
        if (paths.isEmpty()) return QFileDialog::accept();
        runs_->askForMedia(paths, [this, paths](const QString& wrong) {
            if (namesWithMarks() != paths) return; // something else by now
            if (wrong.isNull()) {
                typed_ = paths;
                return QDialog::accept();
            }
            DesktopAlerts().show({QCoreApplication::translate("DesktopPanels", "There is no “%1”.")
                                      .arg(QFileInfo(wrong).fileName()),
                                  QCoreApplication::translate("DesktopPanels", "No picture in this folder has such a name."),
                                  {}});
        });
    }

private:
    /// What stands in the field, as paths, where one has marks in it and no line that is chosen is called so. The toolkit takes
    /// the lines' files before the text, and chooses whatever line the text makes it think of.
    [[nodiscard]] QStringList namesWithMarks() const {
        const QString text = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
        const bool isSeveral = text.contains(QLatin1Char('"'));
        QStringList names = isSeveral ? text.split(QLatin1Char('"')) : QStringList{text};
        names.removeIf([](const QString& name) { return name.trimmed().isEmpty(); });
        QStringList lines;
        for (const QModelIndex& line : findChild<QTreeView*>(QStringLiteral("treeView"))->selectionModel()->selectedRows())
            lines << line.data().toString();
        if (std::is_permutation(lines.begin(), lines.end(), names.begin(), names.end())) return {};
        bool hasMarks = false;
        for (QString& name : names) {
            name = directory().absoluteFilePath(name);
            hasMarks = hasMarks || (runPatternOf(QFileInfo(name).fileName()) && !QFileInfo::exists(name));
        }
        return hasMarks ? names : QStringList();
    }

    QStringList typed_;
    RunLines* runs_; ///< may be null
};

} // namespace

QString DesktopPanels::withExtension(const SavePanel& panel, const QString& path, const QString& answered) {
    const bool typed = panel.allowedTypes.isEmpty() ||
                       panel.allowedTypes.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
    const QString whole = typed ? path : path + QLatin1Char('.') + panel.allowedTypes.first();
    if (whole == answered || !QFileInfo::exists(whole)) return whole;
    // The dialog asked about the name that it answered only.
    return replaceAgreed(whole) ? whole : QString();
}

std::optional<QString> DesktopPanels::saveByPortal(const SavePanel& panel) {
    // The desktop's dialog has no label for the name, and enters folders.
    if (panel.package || !portalServes(bus_, 1)) return std::nullopt;
    PortalFileChooser::Request request;
    request.save = true;
    request.title = panel.title;
    request.accept = panel.prompt;
    request.name = panel.proposedName;
    request.folder = startFolder(folder_);
    request.patterns = patternListOf(panel.allowedTypes);
    if (!panel.accessoryTitles.isEmpty()) {
        request.choiceLabel = panel.accessoryLabel;
        request.choices = panel.accessoryTitles;
        request.choice = panel.accessoryCurrent;
    }
    PortalFileChooser chooser(*bus_.connection());
    const auto answer = chooser.run(request, QApplication::activeWindow());
    if (!answer) return std::nullopt;
    if (answer->paths.isEmpty()) return QString();
    const QFileInfo answered(answer->paths.first());
    folder_ = answered.absolutePath();
    QString name = answered.fileName();
    // The portal tells the choice at the end only.
    if (panel.accessoryChosen && panel.accessoryTitles.contains(answer->choice) &&
        answer->choice != panel.accessoryCurrent)
        name = panel.accessoryChosen(answer->choice, name);
    return withExtension(panel, QDir(folder_).filePath(name), answered.filePath());
}

std::optional<QStringList> DesktopPanels::openByPortal(const OpenPanel& panel) {
    const bool foldersOnly = panel.chooseFolders && !panel.chooseFiles;
    constexpr uint choosesFolders = 3;
    if (!portalServes(bus_, foldersOnly ? choosesFolders : 1)) return std::nullopt;
    PortalFileChooser::Request request;
    request.title = panel.title;
    request.accept = panel.prompt;
    request.multiple = panel.allowMultiple;
    request.folders = foldersOnly;
    request.folder = startFolder(folder_);
    request.patterns = foldersOnly                  ? QStringList()
                       : panel.typesTitle.isEmpty() ? patternListOf(panel.allowedTypes)
                                                    : patternsOfAnyCase(panel.allowedTypes);
    request.patternsTitle = panel.typesTitle;
    PortalFileChooser chooser(*bus_.connection());
    const auto answer = chooser.run(request, QApplication::activeWindow());
    if (!answer) return std::nullopt;
    if (!answer->paths.isEmpty()) folder_ = QFileInfo(answer->paths.first()).absolutePath();
    return answer->paths;
}

QString DesktopPanels::runSave(const SavePanel& panel) {
    if (const auto path = saveByPortal(panel)) return *path;
    SaveDialog dialog(panel, QApplication::activeWindow());
    prepareDialog(dialog, panel.title, panel.prompt);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(patternsOf(panel.allowedTypes));
    dialog.setDirectory(startFolder(folder_));
    dialog.selectFile(panel.proposedName);
    if (!panel.prompt.isEmpty()) dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    if (!panel.nameLabel.isEmpty()) dialog.setLabelText(QFileDialog::FileName, panel.nameLabel);
    if (!panel.allowedTypes.isEmpty()) dialog.setDefaultSuffix(panel.allowedTypes.first());
    addAccessory(dialog, panel);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    const QString path = dialog.selectedFiles().first();
    folder_ = QFileInfo(path).absolutePath(); // a path that was typed lies elsewhere than what the dialog shows
    return withExtension(panel, path, path);
}

QStringList DesktopPanels::runOpen(const OpenPanel& panel) {
    if (!panel.runsAreOne) // the desktop's dialog knows files only
        if (const auto paths = openByPortal(panel)) return *paths;
    auto* runs = panel.runsAreOne ? new RunLines : nullptr;
    RunDialog dialog(runs, QApplication::activeWindow());
    prepareDialog(dialog, panel.title, panel.prompt, runs);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    const bool foldersOnly = panel.chooseFolders && !panel.chooseFiles;
    dialog.setFileMode(foldersOnly           ? QFileDialog::Directory
                       : panel.allowMultiple ? QFileDialog::ExistingFiles
                                             : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::ShowDirsOnly, foldersOnly);
    dialog.setOption(QFileDialog::ReadOnly, !foldersOnly); // no new folder where a file is looked for
    if (!panel.typesTitle.isEmpty()) {
        dialog.setOption(QFileDialog::HideNameFilterDetails); // as long as the table of extensions
        dialog.setNameFilters({QStringLiteral("%1 (%2)").arg(panel.typesTitle, patternsOf(panel.allowedTypes)),
                               QCoreApplication::translate("DesktopPanels", "All Files") + QStringLiteral(" (*)")});
    } else if (!panel.allowedTypes.isEmpty())
        dialog.setNameFilter(patternsOf(panel.allowedTypes));
    dialog.setDirectory(startFolder(folder_));
    if (!panel.prompt.isEmpty()) dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    if (dialog.exec() != QDialog::Accepted || dialog.answer().isEmpty()) return {};
    folder_ = QFileInfo(dialog.answer().first()).absolutePath();
    return dialog.answer();
}

void DesktopPasteboard::setText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

void DesktopPasteboard::setRichText(const QString& html, const QString& plain) {
    auto* data = new QMimeData; // the clipboard's from here on
    data->setHtml(html);
    data->setText(plain);
    QGuiApplication::clipboard()->setMimeData(data);
}

QString DesktopPasteboard::text() const {
    return QGuiApplication::clipboard()->text();
}

void DesktopFileBrowser::reveal(const QStringList& paths) {
    if (paths.isEmpty()) return;
    const auto openFolder = [folder = QFileInfo(paths.first()).absolutePath()] {
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
    };
    QStringList urls;
    for (const QString& path : paths)
        urls << QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message << urls << QString();
    if (!bus_.connection()) {
        openFolder();
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus_.connection()->asyncCall(message), qApp);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [openFolder](QDBusPendingCallWatcher* call) {
                         if (QDBusPendingReply<>(*call).isError()) openFolder();
                         call->deleteLater();
                     });
}

} // namespace daylark
