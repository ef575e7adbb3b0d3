#include "ui/panels/NotesPanel.h"

#include "preferences/Preferences.h"
#include "ui/common/ListOpener.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/RichTextField.h"
#include "ui/common/Theme.h"

#include <QApplication>
#include <QColorDialog>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QVBoxLayout>

namespace daylark {

namespace {

constexpr int typingPauseMilliseconds = 300;

struct NamedColour {
    const char* name;
    QColor colour;
};
const NamedColour noteColours[] = {
    {QT_TRANSLATE_NOOP("NotesPanel", "Red"), QColor(0xe0, 0x6c, 0x66)},
    {QT_TRANSLATE_NOOP("NotesPanel", "Orange"), QColor(0xe0, 0x98, 0x50)},
    {QT_TRANSLATE_NOOP("NotesPanel", "Yellow"), QColor(0xde, 0xc6, 0x5a)},
    {QT_TRANSLATE_NOOP("NotesPanel", "Green"), QColor(0x7c, 0xc0, 0x80)},
    {QT_TRANSLATE_NOOP("NotesPanel", "Blue"), QColor(0x7a, 0xac, 0xe6)},
    {QT_TRANSLATE_NOOP("NotesPanel", "Purple"), QColor(0xb4, 0x98, 0xe0)},
};

QIcon colourSwatch(const QColor& colour) {
    QPixmap swatch(32, 32);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(6, 6, 20, 20);
    return QIcon(swatch);
}

const std::optional<AttributedString>& notesOf(const Movie& movie, NotesField which) {
    return which == NotesField::notes ? movie.notes : movie.notes2;
}

} // namespace

NotesPanel::NotesPanel(ReviewEdits& edits, Preferences& preferences, QWidget* parent)
    : QWidget(parent)
    , edits_(edits)
    , preferences_(preferences) {
    setObjectName(QStringLiteral("notesPanel"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->setSpacing(4);
    layout->addWidget(formatButtons());
    addField(NotesField::notes, QStringLiteral("notes"));
    addField(NotesField::notes2, QStringLiteral("notes2"));
    status_ = new PlainLabel(this);
    status_->setObjectName(QStringLiteral("notesStatus"));
    status_->setFont(theme::smallFont());
    status_->setForegroundRole(QPalette::PlaceholderText);
    status_->setWordWrap(true);
    status_->hide();
    layout->addWidget(status_);
    last_ = field(NotesField::notes);
    setMinimumWidth(240);
    showTitles();

    pause_.setSingleShot(true);
    pause_.setInterval(typingPauseMilliseconds);
    connect(&pause_, &QTimer::timeout, this, &NotesPanel::flush);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &NotesPanel::flush);
    connect(&edits_.history(), &UndoHistory::aboutToMove, this, &NotesPanel::flush);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget*) {
        if (auto* text = qobject_cast<RichTextField*>(old); text && isAncestorOf(text)) {
            last_ = text;
            flush();
            edits_.history().endRun();
        }
    });
    connect(&preferences_.notes1Title, &PreferenceItem::changed, this, &NotesPanel::showTitles);
    connect(&preferences_.notes2Title, &PreferenceItem::changed, this, &NotesPanel::showTitles);
    connect(&edits_, &ReviewEdits::movieChanged, this,
            [this](const std::shared_ptr<Movie>& movie, const QString& changedField) {
                if (movie != movie_) return;
                if (changedField == QLatin1String("notes")) load(NotesField::notes);
                if (changedField == QLatin1String("notes2")) load(NotesField::notes2);
            });
    setMovie(nullptr);
}

NotesPanel::~NotesPanel() {
    flush();
}

void NotesPanel::addField(NotesField which, const QString& name) {
    Field& field = fields_[size_t(which)];
    field.title = new PlainLabel(this);
    field.title->setForegroundRole(QPalette::PlaceholderText);
    field.text = new RichTextField(this);
    field.text->setObjectName(name);
    field.title->setBuddy(field.text);
    layout()->addWidget(field.title);
    static_cast<QVBoxLayout*>(layout())->addWidget(field.text, 1);
    connect(field.text, &RichTextField::edited, this, [this, &field] {
        field.dirty = true;
        pause_.start();
    });
    connect(field.text, &RichTextField::said, this, [this](const QString& words) {
        status_->setText(words);
        status_->setVisible(!words.isEmpty());
    });
}

QWidget* NotesPanel::formatButtons() {
    auto* row = new QWidget(this);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    const auto add = [&](const QString& iconName, const QString& text) {
        auto* button = new QToolButton(row);
        button->setAutoRaise(true);
        button->setIcon(theme::icon(iconName));
        button->setIconSize({16, 16});
        button->setMinimumSize(28, 24);
        button->setToolTip(plain::toolTip(text));
        button->setAccessibleName(text);
        button->setFocusPolicy(Qt::NoFocus); // the text keeps its selection
        button->setObjectName(iconName);
        layout->addWidget(button);
        return button;
    };
    connect(add(QStringLiteral("bold"), tr("Bold (Ctrl+B)")), &QToolButton::clicked, this,
            [this] { focusedField()->toggleBold(); });
    connect(add(QStringLiteral("italic"), tr("Italic (Ctrl+I)")), &QToolButton::clicked, this,
            [this] { focusedField()->toggleItalic(); });
    connect(add(QStringLiteral("underline"), tr("Underline (Ctrl+U)")), &QToolButton::clicked, this,
            [this] { focusedField()->toggleUnderline(); });
    QToolButton* colour = add(QStringLiteral("textColour"), tr("Text Colour"));
    auto* choices = new QMenu(colour);
    choices->addAction(colourSwatch(theme::text), tr("Default"), this,
                       [this] { focusedField()->setColour({}); });
    for (const NamedColour& choice : noteColours)
        choices->addAction(colourSwatch(choice.colour), tr(choice.name), this,
                           [this, picked = choice.colour] { focusedField()->setColour(picked); });
    choices->addSeparator();
    choices->addAction(tr("Other…"), this, &NotesPanel::chooseColour);
    letOpen(*colour, choices);
    layout->addStretch(1);
    frame_ = new PlainLabel(row);
    frame_->setObjectName(QStringLiteral("notesFrame"));
    frame_->setAccessibleName(tr("Frame on screen"));
    frame_->setFont(theme::smallFont());
    frame_->setForegroundRole(QPalette::PlaceholderText);
    layout->addWidget(frame_);
    return row;
}

void NotesPanel::chooseColour() {
    auto* dialog = new QColorDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Text Colour"));
    connect(dialog, &QColorDialog::colorSelected, this,
            [this](const QColor& picked) { focusedField()->setColour(picked); });
    dialog->open();
}

RichTextField* NotesPanel::focusedField() const {
    for (const Field& field : fields_)
        if (field.text->hasFocus()) return field.text;
    return last_;
}

void NotesPanel::focusNotes() {
    RichTextField* first = field(NotesField::notes);
    first->setFocus(Qt::OtherFocusReason);
    first->moveCursor(QTextCursor::End);
}

void NotesPanel::showTitles() {
    const QString titles[] = {preferences_.notes1Title(), preferences_.notes2Title()};
    for (size_t at = 0; at < fields_.size(); ++at) {
        const QString& title = titles[at];
        fields_[at].title->setText(title);
        fields_[at].text->setAccessibleName(title);
    }
}

void NotesPanel::setMovie(const std::shared_ptr<Movie>& movie) {
    if (movie && movie == movie_) return;
    flush();
    movie_ = movie;
    setEnabled(movie_ != nullptr);
    load(NotesField::notes);
    load(NotesField::notes2);
}

void NotesPanel::setFrame(const QString& text) {
    frame_->setText(text);
}

void NotesPanel::load(NotesField which) {
    Field& field = fields_[size_t(which)];
    if (field.dirty) return; // what is being typed has the last word
    const auto text = movie_ ? notesOf(*movie_, which).value_or(AttributedString()) : AttributedString();
    if (field.text->attributed() != text) field.text->setAttributed(text);
}

void NotesPanel::flush() {
    pause_.stop();
    for (size_t at = 0; at < fields_.size(); ++at) {
        Field& field = fields_[at];
        if (!field.dirty) continue;
        if (movie_) {
            const auto which = NotesField(at);
            const AttributedString text = field.text->attributed();
            if (text != notesOf(*movie_, which).value_or(AttributedString()))
                edits_.setNotes(movie_, which, text);
        }
        field.dirty =
            false; // after the edit was announced, so that the announcement does not load the field again
    }
}

} // namespace daylark
