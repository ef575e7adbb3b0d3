#include "ui/preferences/PreferencesWindow.h"

#include "app/program/PreferencesTable.h"
#include "model/StatusCodes.h"
#include "platform/UserDefaults.h"
#include "ui/common/Binding.h"
#include "ui/common/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace daylark {

namespace {

QString preferenceWord(const char* text) {
    return QString::fromLatin1(text);
}

/// Choices that are stored by the very words they show.
std::vector<binding::Choice> wordChoices(std::initializer_list<const char*> words) {
    std::vector<binding::Choice> choices;
    for (const char* word : words)
        choices.emplace_back(preferenceWord(word), preferenceWord(word));
    return choices;
}

constexpr int labelWidth = 168, controlWidth = 232;

} // namespace

/// A page of labelled controls in two columns: label right-aligned, control left.
class PreferencesWindow::Page : public QScrollArea {
public:
    explicit Page(UserDefaults& defaults)
        : defaults_(defaults) {
        auto* inside = new QWidget;
        grid_ = new QGridLayout;
        grid_->setHorizontalSpacing(12);
        grid_->setVerticalSpacing(8);
        grid_->setColumnMinimumWidth(0, labelWidth);
        grid_->setColumnStretch(1, 1);
        auto* layout = new QVBoxLayout(inside);
        layout->setContentsMargins(12, 12, 12, 12);
        layout->addLayout(grid_);
        layout->addStretch();
        setWidget(inside);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }

    QCheckBox* check(const char* title, const char* key) {
        auto* box = new QCheckBox(preferenceWord(title));
        binding::toBool(box, defaults_, preferenceWord(key));
        grid_->addWidget(box, grid_->rowCount(), 1);
        return box;
    }
    QSpinBox* number(const char* title, const char* key, int least, int most, const char* unit = "") {
        auto* box = new QSpinBox;
        box->setRange(least, most);
        box->setSuffix(preferenceWord(unit));
        box->setFixedWidth(112);
        binding::toInteger(box, defaults_, preferenceWord(key));
        add(title, box);
        return box;
    }
    QLineEdit* text(const QString& title, const QString& key) {
        auto* field = new QLineEdit;
        field->setFixedWidth(controlWidth);
        binding::toText(field, defaults_, key);
        add(title, field);
        return field;
    }
    QSlider* slider(const char* title, const char* key) {
        auto* slider = new QSlider(Qt::Horizontal);
        slider->setRange(0, 100);
        slider->setFixedWidth(controlWidth);
        binding::toFraction(slider, defaults_, preferenceWord(key));
        add(title, slider);
        return slider;
    }
    QComboBox* choice(const char* title, const char* key, const std::vector<binding::Choice>& choices) {
        auto* box = new QComboBox;
        box->setMinimumWidth(controlWidth);
        binding::toChoice(box, defaults_, preferenceWord(key), choices);
        add(title, box);
        return box;
    }
    ColourButton* colour(const char* title, const char* key) {
        auto* button = new ColourButton(defaults_, preferenceWord(key));
        add(title, button);
        return button;
    }
    void heading(const char* title) {
        auto* label = new QLabel(preferenceWord(title));
        label->setForegroundRole(QPalette::PlaceholderText);
        label->setContentsMargins(0, 8, 0, 0);
        grid_->addWidget(label, grid_->rowCount(), 1);
    }

private:
    void add(const char* title, QWidget* control) { add(preferenceWord(title), control); }
    void add(const QString& title, QWidget* control) {
        auto* label = new QLabel(title + QLatin1Char(':'));
        label->setBuddy(control);
        control->setAccessibleName(title);
        const int row = grid_->rowCount();
        grid_->addWidget(label, row, 0, Qt::AlignRight | Qt::AlignVCenter);
        grid_->addWidget(control, row, 1, Qt::AlignLeft | Qt::AlignVCenter);
    }

    UserDefaults& defaults_;
    QGridLayout* grid_;
};

PreferencesWindow::PreferencesWindow(UserDefaults& defaults, QWidget* parent)
    : QWidget(parent, Qt::Dialog)
    , defaults_(defaults)
    , groups_(new QListWidget(this))
    , pages_(new QStackedWidget(this)) {
    setWindowTitle(QStringLiteral("Preferences"));
    groups_->setFixedWidth(152);
    groups_->setIconSize({16, 16});
    groups_->setAccessibleName(QStringLiteral("Groups"));
    groups_->setStyleSheet(
        QStringLiteral("QListWidget { padding: 4px; } QListWidget::item { height: 28px; }"));
    addPage(QStringLiteral("General"), QStringLiteral("general"), generalPage());
    addPage(QStringLiteral("Viewer"), QStringLiteral("viewer"), viewerPage());
    addPage(QStringLiteral("Handles"), QStringLiteral("handles"), handlesPage());
    addPage(QStringLiteral("Snapshots"), QStringLiteral("snapshot"), snapshotsPage());
    addPage(QStringLiteral("Statuses"), QStringLiteral("statuses"), statusesPage());
    addPage(QStringLiteral("Notes"), QStringLiteral("notes"), notesPage());
    addPage(QStringLiteral("Media"), QStringLiteral("media"), mediaPage());
    connect(groups_, &QListWidget::currentRowChanged, pages_, &QStackedWidget::setCurrentIndex);
    groups_->setCurrentRow(0);

    auto* reset = new QPushButton(QStringLiteral("&Reset All Preferences"), this);
    reset->setObjectName(QStringLiteral("resetPreferences"));
    reset->setToolTip(QStringLiteral("Every preference goes back to what it was at first"));
    connect(reset, &QPushButton::clicked, this, [this] { resetPreferences(defaults_); });
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setDefault(true);
    close->setShortcut(Qt::Key_Escape);
    connect(close, &QPushButton::clicked, this, &QWidget::hide);

    auto* centre = new QHBoxLayout;
    centre->setSpacing(1);
    centre->addWidget(groups_);
    centre->addWidget(pages_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(12, 8, 12, 12);
    buttons->addWidget(reset);
    buttons->addStretch();
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(centre, 1);
    layout->addLayout(buttons);
    resize(680, 560);
}

void PreferencesWindow::addPage(const QString& title, const QString& icon, QWidget* page) {
    new QListWidgetItem(theme::icon(icon), title, groups_);
    pages_->addWidget(page);
}

void PreferencesWindow::showGroup(int group) {
    groups_->setCurrentRow(group);
}

QWidget* PreferencesWindow::generalPage() {
    auto* page = new Page(defaults_);
    page->check("Open the previous session at start", "loadPreviousSessionOnStartup");
    page->check("Open the viewer's windows as they were", "restorePreviousWindows");
    page->choice("Show items at start", "initialTabItem",
                 {{QStringLiteral("As tiles"), 1}, {QStringLiteral("As a list"), 0}});
    page->check("Say in empty lists what can be dropped there", "showDropText");
    page->check("Hide the library while the viewer is open", "hideMainWindowWhenPlayerLaunches");
    page->check("Open files from the desktop in the viewer", "openWithLaunchesViewer");
    page->choice("Find looks at", "findInputScope",
                 wordChoices({"Search Filepaths & Names", "Search Filenames"}));
    return page;
}

QWidget* PreferencesWindow::viewerPage() {
    auto* page = new Page(defaults_);
    page->choice("A movie starts at", "loadFrame",
                 wordChoices({"First Frame", "Second Frame", "Middle Frame", "Current Frame",
                              "Last Visited Frame", "First Bookmark"}));
    page->check("Play when the viewer opens", "playMovieWhenViewerLaunches");
    page->choice("Repeat", "repeatType",
                 wordChoices({"Loop Movie", "One Shot", "Ping-Pong", "Play Movie Once", "Play Playlist Once",
                              "Loop Playlist"}));
    page->slider("Volume", "volume");
    page->choice("The picture is drawn by", "pictureRenderer",
                 {{QStringLiteral("Graphics hardware, where there is"), QStringLiteral("Automatic")},
                  {QStringLiteral("Software"), QStringLiteral("Software")},
                  {QStringLiteral("OpenGL"), QStringLiteral("OpenGL")}})
        ->setToolTip(QStringLiteral("From the next time that the viewer opens"));
    page->check("Show playback statistics", "displayPlaybackStatistics");
    page->check("Keep the window in the movie's proportions", "constrainViewerToMovieProportions");
    page->heading("Over the picture");
    page->number("Counter starts at", "counterStartFrame", -1000000, 1000000);
    page->check("Show the frame counter", "displayFrameCounter");
    page->check("Show the timecode", "displayTimecode");
    page->choice("Timecode stands", "timecodeDisplayType",
                 {{QStringLiteral("Over the picture"), QStringLiteral("Fixed")},
                  {QStringLiteral("In a window of its own"), QStringLiteral("Floating")}});
    page->check("Show the file name", "displayFilename");
    page->check("Show bookmark texts", "displayBookmarkText");
    page->colour("Text colour", "onscreenTextColour");
    page->heading("Mask");
    page->check("Show the mask", "showMask");
    page->choice("Mask ratio", "movieMaskRatio", binding::maskRatioChoices());
    page->slider("Mask opacity", "movieMaskOpacity");
    page->heading("Bookmarks and drawings");
    page->number("A new bookmark lasts", "bookmarkDuration", 1, 1000000, " frames");
    page->choice("Show drawings", "displayDrawingsOptions",
                 wordChoices({"Always", "Only When Paused", "With Drawing Tools"}));
    page->check("Start drawing when the drawing tools open", "autoSwitchToDrawingMode");
    page->colour("Brush colour", "brushColour");
    page->heading("Full screen");
    page->check("No single keys in full screen", "disableHotkeysInFullScreenMode");
    page->check("No controls at the lower edge", "disableLowerMouseZone");
    page->check("No playlist at the right edge", "disableRightMouseZone");
    return page;
}

QWidget* PreferencesWindow::handlesPage() {
    auto* page = new Page(defaults_);
    page->check("Trim handles while playing", "trimHandles");
    page->number("Head handle", "handleHead", 0, 100000, " frames");
    page->number("Tail handle", "handleTail", 0, 100000, " frames");
    page->heading("At every start");
    QCheckBox* apply = page->check("Take these default handles", "applyDefaultHandles");
    QSpinBox* head = page->number("Default head handle", "defaultHandleHead", 0, 100000, " frames");
    QSpinBox* tail = page->number("Default tail handle", "defaultHandleTail", 0, 100000, " frames");
    for (QSpinBox* box : {head, tail}) {
        box->setEnabled(apply->isChecked());
        connect(&defaults_, &UserDefaults::changed, box, [this, box](const QString& key) {
            if (key == QLatin1String("applyDefaultHandles")) box->setEnabled(defaults_.boolForKey(key));
        });
    }
    return page;
}

QWidget* PreferencesWindow::snapshotsPage() {
    auto* page = new Page(defaults_);
    page->choice("File format", "snapshotFileFormat", wordChoices({"JPEG", "PNG", "TIFF"}));
    page->slider("Quality", "compressionQuality");
    const char* const setWidth = "Set Width (maintains window ratio)";
    page->choice("Size", "snapshotImageScale",
                 wordChoices({"Same As Window", "Half Window Size", "Quarter Window Size", setWidth}));
    enableWhen(page->number("Width", "snapshotWidth", 16, 16384, " pixels"),
               QStringLiteral("snapshotImageScale"), preferenceWord(setWidth));
    page->choice("Name", "snapshotNameSource", wordChoices({"Same As Source", "User Defined"}));
    enableWhen(page->text(QStringLiteral("Own name"), QStringLiteral("snapshotName")),
               QStringLiteral("snapshotNameSource"), QStringLiteral("User Defined"));
    page->choice("File name", "snapshotFilenameFormat",
                 wordChoices({"filename.frameNumber.ext", "filename.snapshotNumber.ext",
                              "snapshotNumber.filename.ext"}));
    return page;
}

QWidget* PreferencesWindow::statusesPage() {
    auto* page = new Page(defaults_);
    const QStringList codes = status::codes();
    static const char* const colours[] = {"Green", "Yellow", "Orange", "Red", "Purple", "Blue", "Grey"};
    for (qsizetype at = 0; at < codes.size(); ++at) {
        QLineEdit* field = page->text(preferenceWord(colours[at]), codes[at]);
        field->addAction(theme::icon(status::flagImageName(codes[at])), QLineEdit::LeadingPosition);
    }
    return page;
}

QWidget* PreferencesWindow::notesPage() {
    auto* page = new Page(defaults_);
    page->text(QStringLiteral("First notes are called"), QStringLiteral("notes1Title"));
    page->text(QStringLiteral("Second notes are called"), QStringLiteral("notes2Title"));
    page->heading("Export");
    page->choice("Format", "notesExportFormat",
                 wordChoices({"CSV (Comma Separated Values)", "RTF (Rich Text)"}));
    page->check("With bookmarks", "printBookmarksInNotes");
    page->check("File names without their extension", "hideFileExtensionInNotes");
    return page;
}

QWidget* PreferencesWindow::mediaPage() {
    auto* page = new Page(defaults_);
    page->check("Find files by their path (network volumes)", "networkMode");
    page->check("Take still images as well as movies", "allowImageFiles");
    page->choice("Thumbnails show the", "thumbnailFrame",
                 wordChoices({"First Frame", "Second Frame", "Middle Frame", "Last Frame"}));
    QSpinBox* cache = page->number("Memory for pictures", "cacheSizeMegabytes", 0, 1 << 20, " MB");
    cache->setSpecialValueText(QStringLiteral("Automatic"));
    cache->setSingleStep(256);
    cache->setToolTip(
        QStringLiteral("How much memory decoded pictures may take, so that stepping and playing back and "
                       "forth need not wait. Automatic: a quarter of this machine's memory, at most "
                       "4096 MB. The blue strip under the position slider shows which frames are ready."));
    return page;
}

void PreferencesWindow::enableWhen(QWidget* control, const QString& key, const QString& value) {
    control->setEnabled(defaults_.stringForKey(key) == value);
    connect(&defaults_, &UserDefaults::changed, control, [this, control, key, value](const QString& changed) {
        if (changed == key) control->setEnabled(defaults_.stringForKey(key) == value);
    });
}

} // namespace daylark
