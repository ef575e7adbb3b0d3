#include "ui/preferences/PreferencesWindow.h"

#include "app/program/NotesExport.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "preferences/StartupCorrections.h"
#include "ui/common/Binding.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/desktop/Translations.h"
#include "ui/preferences/KeysPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QLocale>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

namespace {

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

    QCheckBox* check(const QString& title, Preference<bool>& preference) {
        auto* box = new QCheckBox(title);
        binding::toBool(box, preference);
        grid_->addWidget(box, grid_->rowCount(), 1);
        return box;
    }
    QCheckBox* checkOpposite(const QString& title, Preference<bool>& preference) {
        auto* box = new QCheckBox(title);
        binding::toOpposite(box, preference);
        grid_->addWidget(box, grid_->rowCount(), 1);
        return box;
    }
    QSpinBox* number(const QString& title, Preference<int>& preference, int least, int most,
                     const QString& unit = {}) {
        auto* box = new QSpinBox;
        box->setRange(least, most);
        box->setSuffix(unit);
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
    QSlider* slider(const QString& title, Preference<float>& preference) {
        auto* slider = new QSlider(Qt::Horizontal);
        slider->setRange(0, 100);
        slider->setFixedWidth(controlWidth);
        binding::toFraction(slider, preference);
        add(title, slider);
        return slider;
    }
    QComboBox* choice(const QString& title, PreferenceItem& preference,
                      const std::vector<binding::Choice>& choices) {
        auto* box = new QComboBox;
        box->setMinimumWidth(controlWidth);
        binding::toChoice(box, preference, choices);
        add(title, box);
        return box;
    }
    ColourButton* colour(const QString& title, Preference<QColor>& preference) {
        auto* button = new ColourButton(preference);
        add(title, button);
        return button;
    }
    /// What is to be known of the control above, in small.
    PlainLabel* note(const QString& text) {
        auto* label = new PlainLabel(text);
        label->setFont(theme::smallFont());
        label->setForegroundRole(QPalette::PlaceholderText);
        label->setWordWrap(true);
        grid_->addWidget(label, grid_->rowCount(), 1);
        return label;
    }
    /// A path with a button that chooses it.
    QPushButton* folder(const QString& title, Preference<QString>& preference) {
        auto* together = new QWidget;
        auto* row = new QHBoxLayout(together);
        row->setContentsMargins({});
        row->setSpacing(8);
        auto* field = new QLineEdit;
        field->setMinimumWidth(controlWidth);
        field->setAccessibleName(title);
        binding::toText(field, preference);
        auto* choose = new QPushButton(PreferencesWindow::tr("Choose..."));
        row->addWidget(field, 1);
        row->addWidget(choose);
        together->setFocusProxy(field);
        add(title, together);
        return choose;
    }
    /// So wide that nothing in it is cut.
    [[nodiscard]] int wanted() const {
        return widget()->sizeHint().width() + verticalScrollBar()->sizeHint().width();
    }
    void heading(const QString& title) {
        auto* label = new PlainLabel(title);
        label->setForegroundRole(QPalette::PlaceholderText);
        label->setContentsMargins(0, 8, 0, 0);
        grid_->addWidget(label, grid_->rowCount(), 1);
    }

private:
    void add(const QString& title, QWidget* control) {
        auto* label = new PlainLabel(title + QLatin1Char(':'));
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
    setWindowTitle(tr("Preferences"));
    groups_->setFixedWidth(152);
    groups_->setIconSize({16, 16});
    groups_->setAccessibleName(tr("Groups"));
    groups_->setStyleSheet(
        QStringLiteral("QListWidget { padding: 4px; } QListWidget::item { height: 28px; }"));
    addPage(tr("General"), QStringLiteral("general"), generalPage());
    addPage(tr("Viewer"), QStringLiteral("viewer"), viewerPage());
    addPage(tr("Keys"), QStringLiteral("keys"), new KeysPage(preferences_));
    addPage(tr("Handles"), QStringLiteral("handles"), handlesPage());
    addPage(tr("Snapshots"), QStringLiteral("snapshot"), snapshotsPage());
    addPage(tr("Flags"), QStringLiteral("statuses"), flagsPage());
    addPage(tr("Notes"), QStringLiteral("notes"), notesPage());
    addPage(tr("Media"), QStringLiteral("media"), mediaPage());
    connect(groups_, &QListWidget::currentRowChanged, pages_, &QStackedWidget::setCurrentIndex);
    groups_->setCurrentRow(0);

    auto* reset = new QPushButton(tr("&Reset All Preferences"), this);
    reset->setObjectName(QStringLiteral("resetPreferences"));
    reset->setToolTip(tr("Every preference goes back to what it was at first"));
    connect(reset, &QPushButton::clicked, this, [this] { preferences_.resetAll(); });
    auto* close = new QPushButton(tr("&Close"), this);
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
    int widest = 520;
    for (int page = 0; page < pages_->count(); ++page)
        if (const auto* texts = dynamic_cast<const Page*>(pages_->widget(page))) widest = std::max(widest, texts->wanted());
    resize(QSize(groups_->width() + widest, 560).boundedTo(screen()->availableSize()));
}

void PreferencesWindow::addPage(const QString& title, const QString& icon, QWidget* page) {
    new QListWidgetItem(theme::icon(icon), title, groups_);
    pages_->addWidget(page);
}

QWidget* PreferencesWindow::generalPage() {
    auto* page = new Page;
    page->check(tr("Open the previous session at start"), preferences_.loadPreviousSessionOnStartup);
    page->check(tr("Open the viewer's windows as they were"), preferences_.restorePreviousWindows);
    page->choice(tr("Show items at start"), preferences_.initialTabItem,
                 {{tr("As tiles"), 1}, {tr("As a list"), 0}, {tr("As I left it"), 2}});
    std::vector<binding::Choice> languages{{tr("The desktop's"), QString()}, {QStringLiteral("English"), QStringLiteral("en")}};
    for (const QString& language : Translations::languages())
        languages.emplace_back(Translations::nameOf(language), language);
    page->choice(tr("Language"), preferences_.language, languages)->setToolTip(tr("From the next start on"));
    page->check(tr("Go on at the item reviewed last"), preferences_.startAtLastReviewed);
    page->check(tr("Show file extensions"), preferences_.displayFileExtensions);
    page->check(tr("Dim what all names of a list begin with"), preferences_.dimCommonBeginnings);
    page->check(tr("Say when many items were changed at once"), preferences_.tellOfManyChanges);
    page->check(tr("Say in empty lists what can be dropped there"), preferences_.showDropText);
    page->check(tr("Hide the library while the viewer is open"),
                preferences_.hideMainWindowWhenPlayerLaunches)
        ->setToolTip(tr("On again at every start"));
    page->check(tr("Open files from the desktop in the viewer"), preferences_.openWithLaunchesViewer);
    page->choice(tr("Find looks at"), preferences_.findInputScope, binding::wordChoices<FindInput>());
    return page;
}

QWidget* PreferencesWindow::viewerPage() {
    auto* page = new Page;
    page->choice(tr("Movies start at"), preferences_.loadFrame, binding::wordChoices<StartFrame>());
    PlainLabel* lasts = page->note(tr("Until Daylark is closed; at the next start it is First Frame again"));
    lasts->setObjectName(QStringLiteral("startFrameLasts"));
    const auto sayHowLong = [lasts, &start = preferences_.loadFrame] { lasts->setVisible(!isKeptAtStart(start())); };
    connect(&preferences_.loadFrame, &PreferenceItem::changed, lasts, sayHowLong);
    sayHowLong();
    page->check(tr("Play when the viewer opens"), preferences_.playMovieWhenViewerLaunches);
    page->choice(tr("Repeat"), preferences_.repeatType, binding::wordChoices<RepeatMode>())
        ->setToolTip(tr("Every start begins with Loop Movie"));
    page->check(tr("Exact loops: a range turns at its very last frame"), preferences_.exactLoops);
    page->slider(tr("Volume"), preferences_.volume);
    page->check(tr("Zoom at the pointer by Shift and the wheel"), preferences_.wheelZoomsWithShift);
    page->choice(tr("The picture is drawn by"), preferences_.pictureRenderer,
                 {{tr("Graphics hardware, where there is"), wordOf(RendererChoice::automatic)},
                  {tr("Software"), wordOf(RendererChoice::software)},
                  {tr("OpenGL"), wordOf(RendererChoice::openGl)}})
        ->setToolTip(tr("From the next time that the viewer opens"));
    page->check(tr("Show playback statistics"), preferences_.displayPlaybackStatistics);
    page->check(tr("Keep the window in the movie's proportions"),
                preferences_.constrainViewerToMovieProportions);
    page->heading(tr("Over the picture"));
    page->number(tr("Counter starts at"), preferences_.counterStartFrame, -1000000, 1000000);
    page->check(tr("Show the frame counter"), preferences_.displayFrameCounter);
    page->check(tr("Show the timecode"), preferences_.displayTimecode);
    page->choice(tr("Timecode stands"), preferences_.timecodeDisplayType,
                 {{tr("Over the picture"), wordOf(TimecodePlace::fixed)},
                  {tr("In a window of its own"), wordOf(TimecodePlace::floating)}});
    page->check(tr("Show the file name"), preferences_.displayFilename);
    page->check(tr("Show bookmark texts"), preferences_.displayBookmarkText);
    page->colour(tr("Text colour"), preferences_.onscreenTextColour);
    page->heading(tr("Mask"));
    page->check(tr("Show the mask"), preferences_.showMask);
    page->choice(tr("Mask ratio"), preferences_.movieMaskRatio, binding::maskRatioChoices());
    page->slider(tr("Mask opacity"), preferences_.movieMaskOpacity);
    page->heading(tr("Bookmarks and drawings"));
    page->number(tr("New bookmarks last"), preferences_.bookmarkDuration, 1, 1000000, tr(" frames"));
    page->choice(tr("Show drawings"), preferences_.displayDrawingsOptions,
                 binding::wordChoices<DrawingsShown>());
    page->check(tr("Take up the brush when the drawing tools open"), preferences_.autoSwitchToDrawingMode);
    page->colour(tr("Brush colour"), preferences_.brushColour);
    page->heading(tr("Panels"));
    page->check(tr("Dock panels that would cover the picture, when all are shown"), preferences_.dockWherePanelsCover);
    page->check(tr("Layouts keep what is docked and a maximised window"), preferences_.layoutsKeepDocking);
    page->heading(tr("Full screen"));
    page->checkOpposite(tr("Single keys work"), preferences_.disableHotkeysInFullScreenMode);
    page->checkOpposite(tr("Controls at the lower edge"), preferences_.disableLowerMouseZone);
    page->checkOpposite(tr("Playlist at the right edge"), preferences_.disableRightMouseZone);
    page->check(tr("Panels come back when it is left"), preferences_.panelsReturnFromFullScreen);
    return page;
}

QWidget* PreferencesWindow::handlesPage() {
    auto* page = new Page;
    page->check(tr("Trim handles"), preferences_.trimHandles)->setToolTip(tr("Off again at every start"));
    page->check(tr("Say in passing that handles are longer than a movie shown"), preferences_.longHandlesInPassing)
        ->setToolTip(tr("Else always as a question; what is typed or marked is always answered"));
    page->number(tr("Head handle"), preferences_.handleHead, 0, 100000, tr(" frames"));
    page->number(tr("Tail handle"), preferences_.handleTail, 0, 100000, tr(" frames"));
    page->heading(tr("At every start"));
    QCheckBox* apply = page->check(tr("Take these default handles"), preferences_.applyDefaultHandles);
    QSpinBox* head =
        page->number(tr("Default head handle"), preferences_.defaultHandleHead, 0, 100000, tr(" frames"));
    QSpinBox* tail =
        page->number(tr("Default tail handle"), preferences_.defaultHandleTail, 0, 100000, tr(" frames"));
    for (QSpinBox* box : {head, tail}) {
        box->setEnabled(apply->isChecked());
        connect(&preferences_.applyDefaultHandles, &PreferenceItem::changed, box,
                [this, box] { box->setEnabled(preferences_.applyDefaultHandles()); });
    }
    return page;
}

QWidget* PreferencesWindow::snapshotsPage() {
    auto* page = new Page;
    page->choice(tr("File format"), preferences_.snapshotFileFormat, binding::wordChoices<SnapshotFormat>());
    page->slider(tr("Quality"), preferences_.compressionQuality);
    page->choice(tr("Size"), preferences_.snapshotImageScale, binding::wordChoices<SnapshotScale>());
    enableWhen(page->number(tr("Width"), preferences_.snapshotWidth, 16, 16384, tr(" pixels")),
               preferences_.snapshotImageScale, SnapshotScale::setWidth);
    page->choice(tr("Name"), preferences_.snapshotNameSource, binding::wordChoices<SnapshotNameSource>());
    enableWhen(page->text(tr("Own name"), preferences_.snapshotName),
               preferences_.snapshotNameSource, SnapshotNameSource::userDefined);
    page->choice(tr("File name"), preferences_.snapshotFilenameFormat,
                 binding::wordChoices<SnapshotNameFormat>());
    return page;
}

QWidget* PreferencesWindow::flagsPage() {
    auto* page = new Page;
    const QStringList codes = status::codes();
    const QStringList colours{tr("Green"),  tr("Yellow"), tr("Orange"), tr("Red"),
                              tr("Purple"), tr("Blue"),   tr("Grey")};
    for (qsizetype at = 0; at < codes.size(); ++at) {
        QLineEdit* field = page->text(colours[at], preferences_.statusNames[size_t(at)]);
        field->addAction(theme::icon(status::flagImageName(codes[at])), QLineEdit::LeadingPosition);
    }
    return page;
}

QWidget* PreferencesWindow::notesPage() {
    auto* page = new Page;
    page->text(tr("First notes are called"), preferences_.notes1Title);
    page->text(tr("Second notes are called"), preferences_.notes2Title);
    page->heading(tr("Export"));
    std::vector<binding::Choice> formatChoices;
    for (const QString& title : NotesExport::formatTitles())
        formatChoices.emplace_back(title, title);
    page->choice(tr("Format"), preferences_.notesExportFormat, formatChoices);
    page->check(tr("With bookmarks"), preferences_.printBookmarksInNotes);
    page->checkOpposite(tr("File names with their extension"), preferences_.hideFileExtensionInNotes);
    return page;
}

QWidget* PreferencesWindow::mediaPage() {
    auto* page = new Page;
    page->check(tr("Find files by their path (network volumes)"), preferences_.networkMode);
    page->check(tr("Take still images as well as movies"), preferences_.allowImageFiles);
    page->check(tr("Take runs of numbered pictures as movies"), preferences_.runsBecomeMovies)
        ->setToolTip(tr("sh010.1001.exr, sh010.1002.exr, … as one item"));
    std::vector<binding::Choice> rates;
    for (const double rate : {23.976, 24.0, 25.0, 29.97, 30.0, 48.0, 50.0, 59.94, 60.0})
        rates.emplace_back(QLocale().toString(rate, 'g', 5), rate);
    page->choice(tr("Frames a second of runs"), preferences_.runFrameRate, rates)
        ->setToolTip(tr("Where neither their pictures nor a person say it"));
    page->choice(tr("Missing pictures of runs"), preferences_.missingPictures, binding::wordChoices<MissingPictures>());
    QComboBox* numbers = page->choice(tr("First frame is production number"), preferences_.firstFrameNumber,
                                      {{QStringLiteral("1"), QStringLiteral("1")},
                                       {QStringLiteral("1001"), QStringLiteral("1001")},
                                       {tr("That of its timecode"), QStringLiteral("Timecode")},
                                       {tr("Another number"), QStringLiteral("Other")}});
    numbers->setToolTip(tr("Where neither a run's pictures nor a person say it"));
    const auto showInForce = [this, numbers] { // where nobody has chosen
        const QSignalBlocker silence(numbers);
        if (numbers->currentIndex() < 0) numbers->setCurrentIndex(int(preferences_.firstFrameNumber()));
    };
    showInForce();
    connect(&preferences_.firstFrameNumber, &PreferenceItem::changed, numbers, showInForce);
    QSpinBox* first = page->number(tr("The other number"), preferences_.otherFirstFrameNumber, -1'000'000, 100'000'000);
    enableWhen(first, preferences_.firstFrameNumber, FirstFrameNumber::other);
    page->check(tr("Search for missing media automatically"), preferences_.autoSearchForMissingMedia)
        ->setToolTip(tr("After every look at the files, under this folder"));
    QPushButton* choose = page->folder(tr("Search under"), preferences_.autoSearchPath);
    choose->setObjectName(QStringLiteral("chooseSearchFolder"));
    choose->setToolTip(tr("Choose the folder of automatic searches"));
    connect(choose, &QPushButton::clicked, this, &PreferencesWindow::searchFolderWanted);
    page->choice(tr("Thumbnails show the"), preferences_.thumbnailFrame,
                 binding::wordChoices<ThumbnailFrame>());
    page->check(tr("Sharp thumbnails at every size"), preferences_.sharpThumbnails)
        ->setToolTip(tr("Kept with the desktop's own thumbnails, not in the session"));
    QSpinBox* cache =
        page->number(tr("Memory for pictures"), preferences_.cacheSizeMegabytes, 0, 1 << 20, tr(" MB"));
    cache->setSpecialValueText(tr("Automatic"));
    cache->setSingleStep(256);
    cache->setToolTip(
        tr("How much memory decoded pictures may take, so that stepping and playing back and "
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
