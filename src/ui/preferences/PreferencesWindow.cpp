#include "ui/preferences/PreferencesWindow.h"

#include "app/program/NotesExport.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/common/Binding.h"
#include "ui/common/Theme.h"
#include "ui/preferences/KeysPage.h"

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

constexpr int labelWidth = 168, controlWidth = 232;

} // namespace

/// A page of labelled controls in two columns: label right-aligned, control left.
class PreferencesWindow::Page : public QScrollArea {
public:
    Page() {
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

    QCheckBox* check(const char* title, Preference<bool>& preference) {
        auto* box = new QCheckBox(preferenceWord(title));
        binding::toBool(box, preference);
        grid_->addWidget(box, grid_->rowCount(), 1);
        return box;
    }
    QSpinBox* number(const char* title, Preference<int>& preference, int least, int most,
                     const char* unit = "") {
        auto* box = new QSpinBox;
        box->setRange(least, most);
        box->setSuffix(preferenceWord(unit));
        box->setFixedWidth(112);
        binding::toInteger(box, preference);
        add(title, box);
        return box;
    }
    QLineEdit* text(const QString& title, Preference<QString>& preference) {
        auto* field = new QLineEdit;
        field->setFixedWidth(controlWidth);
        binding::toText(field, preference);
        add(title, field);
        return field;
    }
    QSlider* slider(const char* title, Preference<float>& preference) {
        auto* slider = new QSlider(Qt::Horizontal);
        slider->setRange(0, 100);
        slider->setFixedWidth(controlWidth);
        binding::toFraction(slider, preference);
        add(title, slider);
        return slider;
    }
    QComboBox* choice(const char* title, PreferenceItem& preference,
                      const std::vector<binding::Choice>& choices) {
        auto* box = new QComboBox;
        box->setMinimumWidth(controlWidth);
        binding::toChoice(box, preference, choices);
        add(title, box);
        return box;
    }
    ColourButton* colour(const char* title, Preference<QColor>& preference) {
        auto* button = new ColourButton(preference);
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

    QGridLayout* grid_;
};

PreferencesWindow::PreferencesWindow(Preferences& preferences, QWidget* parent)
    : QWidget(parent, Qt::Dialog)
    , preferences_(preferences)
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
    addPage(QStringLiteral("Keys"), QStringLiteral("keys"), new KeysPage(preferences_));
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
    connect(reset, &QPushButton::clicked, this, [this] { preferences_.resetAll(); });
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
    auto* page = new Page;
    page->check("Open the previous session at start", preferences_.loadPreviousSessionOnStartup);
    page->check("Open the viewer's windows as they were", preferences_.restorePreviousWindows);
    page->choice("Show items at start", preferences_.initialTabItem,
                 {{QStringLiteral("As tiles"), 1}, {QStringLiteral("As a list"), 0}});
    page->check("Say in empty lists what can be dropped there", preferences_.showDropText);
    page->check("Hide the library while the viewer is open", preferences_.hideMainWindowWhenPlayerLaunches);
    page->check("Open files from the desktop in the viewer", preferences_.openWithLaunchesViewer);
    page->choice("Find looks at", preferences_.findInputScope, binding::wordChoices<FindInput>());
    return page;
}

QWidget* PreferencesWindow::viewerPage() {
    auto* page = new Page;
    page->choice("A movie starts at", preferences_.loadFrame, binding::wordChoices<StartFrame>());
    page->check("Play when the viewer opens", preferences_.playMovieWhenViewerLaunches);
    page->choice("Repeat", preferences_.repeatType, binding::wordChoices<RepeatMode>());
    page->slider("Volume", preferences_.volume);
    page->choice("The picture is drawn by", preferences_.pictureRenderer,
                 {{QStringLiteral("Graphics hardware, where there is"), wordOf(RendererChoice::automatic)},
                  {QStringLiteral("Software"), wordOf(RendererChoice::software)},
                  {QStringLiteral("OpenGL"), wordOf(RendererChoice::openGl)}})
        ->setToolTip(QStringLiteral("From the next time that the viewer opens"));
    page->check("Show playback statistics", preferences_.displayPlaybackStatistics);
    page->check("Keep the window in the movie's proportions", preferences_.constrainViewerToMovieProportions);
    page->heading("Over the picture");
    page->number("Counter starts at", preferences_.counterStartFrame, -1000000, 1000000);
    page->check("Show the frame counter", preferences_.displayFrameCounter);
    page->check("Show the timecode", preferences_.displayTimecode);
    page->choice("Timecode stands", preferences_.timecodeDisplayType,
                 {{QStringLiteral("Over the picture"), wordOf(TimecodePlace::fixed)},
                  {QStringLiteral("In a window of its own"), wordOf(TimecodePlace::floating)}});
    page->check("Show the file name", preferences_.displayFilename);
    page->check("Show bookmark texts", preferences_.displayBookmarkText);
    page->colour("Text colour", preferences_.onscreenTextColour);
    page->heading("Mask");
    page->check("Show the mask", preferences_.showMask);
    page->choice("Mask ratio", preferences_.movieMaskRatio, binding::maskRatioChoices());
    page->slider("Mask opacity", preferences_.movieMaskOpacity);
    page->heading("Bookmarks and drawings");
    page->number("A new bookmark lasts", preferences_.bookmarkDuration, 1, 1000000, " frames");
    page->choice("Show drawings", preferences_.displayDrawingsOptions, binding::wordChoices<DrawingsShown>());
    page->check("Start drawing when the drawing tools open", preferences_.autoSwitchToDrawingMode);
    page->colour("Brush colour", preferences_.brushColour);
    page->heading("Full screen");
    page->check("No single keys in full screen", preferences_.disableHotkeysInFullScreenMode);
    page->check("No controls at the lower edge", preferences_.disableLowerMouseZone);
    page->check("No playlist at the right edge", preferences_.disableRightMouseZone);
    return page;
}

QWidget* PreferencesWindow::handlesPage() {
    auto* page = new Page;
    page->check("Trim handles while playing", preferences_.trimHandles);
    page->number("Head handle", preferences_.handleHead, 0, 100000, " frames");
    page->number("Tail handle", preferences_.handleTail, 0, 100000, " frames");
    page->heading("At every start");
    QCheckBox* apply = page->check("Take these default handles", preferences_.applyDefaultHandles);
    QSpinBox* head =
        page->number("Default head handle", preferences_.defaultHandleHead, 0, 100000, " frames");
    QSpinBox* tail =
        page->number("Default tail handle", preferences_.defaultHandleTail, 0, 100000, " frames");
    for (QSpinBox* box : {head, tail}) {
        box->setEnabled(apply->isChecked());
        connect(&preferences_.applyDefaultHandles, &PreferenceItem::changed, box,
                [this, box] { box->setEnabled(preferences_.applyDefaultHandles()); });
    }
    return page;
}

QWidget* PreferencesWindow::snapshotsPage() {
    auto* page = new Page;
    page->choice("File format", preferences_.snapshotFileFormat, binding::wordChoices<SnapshotFormat>());
    page->slider("Quality", preferences_.compressionQuality);
    page->choice("Size", preferences_.snapshotImageScale, binding::wordChoices<SnapshotScale>());
    enableWhen(page->number("Width", preferences_.snapshotWidth, 16, 16384, " pixels"),
               preferences_.snapshotImageScale, SnapshotScale::setWidth);
    page->choice("Name", preferences_.snapshotNameSource, binding::wordChoices<SnapshotNameSource>());
    enableWhen(page->text(QStringLiteral("Own name"), preferences_.snapshotName),
               preferences_.snapshotNameSource, SnapshotNameSource::userDefined);
    page->choice("File name", preferences_.snapshotFilenameFormat,
                 binding::wordChoices<SnapshotNameFormat>());
    return page;
}

QWidget* PreferencesWindow::statusesPage() {
    auto* page = new Page;
    const QStringList codes = status::codes();
    static const char* const colours[] = {"Green", "Yellow", "Orange", "Red", "Purple", "Blue", "Grey"};
    for (qsizetype at = 0; at < codes.size(); ++at) {
        QLineEdit* field = page->text(preferenceWord(colours[at]), preferences_.statusNames[size_t(at)]);
        field->addAction(theme::icon(status::flagImageName(codes[at])), QLineEdit::LeadingPosition);
    }
    return page;
}

QWidget* PreferencesWindow::notesPage() {
    auto* page = new Page;
    page->text(QStringLiteral("First notes are called"), preferences_.notes1Title);
    page->text(QStringLiteral("Second notes are called"), preferences_.notes2Title);
    page->heading("Export");
    std::vector<binding::Choice> formatChoices;
    for (const QString& title : NotesExport::formatTitles())
        formatChoices.emplace_back(title, title);
    page->choice("Format", preferences_.notesExportFormat, formatChoices);
    page->check("With bookmarks", preferences_.printBookmarksInNotes);
    page->check("File names without their extension", preferences_.hideFileExtensionInNotes);
    return page;
}

QWidget* PreferencesWindow::mediaPage() {
    auto* page = new Page;
    page->check("Find files by their path (network volumes)", preferences_.networkMode);
    page->check("Take still images as well as movies", preferences_.allowImageFiles);
    page->choice("Thumbnails show the", preferences_.thumbnailFrame, binding::wordChoices<ThumbnailFrame>());
    QSpinBox* cache = page->number("Memory for pictures", preferences_.cacheSizeMegabytes, 0, 1 << 20, " MB");
    cache->setSpecialValueText(QStringLiteral("Automatic"));
    cache->setSingleStep(256);
    cache->setToolTip(
        QStringLiteral("How much memory decoded pictures may take, so that stepping and playing back and "
                       "forth need not wait. Automatic: a quarter of this machine's memory, at most "
                       "4096 MB. The blue strip under the position slider shows which frames are ready."));
    return page;
}

template<class T>
void PreferencesWindow::enableWhen(QWidget* control, const Preference<T>& preference, const T& value) {
    const auto follow = [control, &preference, value] { control->setEnabled(preference() == value); };
    follow();
    connect(&preference, &PreferenceItem::changed, control, follow);
}

} // namespace daylark
