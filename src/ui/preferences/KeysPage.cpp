#include "ui/preferences/KeysPage.h"

#include "commands/library/LibraryCommands.h"
#include "commands/viewer/ViewerCommands.h"
#include "preferences/Preferences.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"
#include "ui/preferences/KeyField.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace daylark {

namespace {

constexpr int idRole = Qt::UserRole;
constexpr int footHeight = 40; ///< a question of two lines

/// For every command of the list.
template<class Action>
void forEachItem(const QTreeWidget& list, const Action& action) {
    for (int section = 0; section < list.topLevelItemCount(); ++section)
        for (int row = 0; row < list.topLevelItem(section)->childCount(); ++row)
            action(*list.topLevelItem(section)->child(row));
}

QString labelOf(const KeyMap::Strokes& strokes) {
    QStringList labels;
    for (const KeyStroke& stroke : strokes)
        labels << stroke.label();
    return labels.join(QStringLiteral(" / "));
}

} // namespace

KeysPage::KeysPage(Preferences& preferences, QWidget* parent)
    : QWidget(parent)
    , preferences_(preferences)
    , keys_(preferences)
    , search_(new QLineEdit(this))
    , list_(new QTreeWidget(this))
    , nothingFound_(new PlainLabel(tr("No command or key is called so."), list_->viewport()))
    , foot_(new QStackedWidget(this))
    , field_(new KeyField(this)) {
    search_->setObjectName(QStringLiteral("keySearch"));
    search_->setPlaceholderText(tr("Find a command or a key"));
    search_->setAccessibleName(search_->placeholderText());
    search_->setClearButtonEnabled(true);
    nothingFound_->setForegroundRole(QPalette::PlaceholderText);
    nothingFound_->move(12, 12);
    nothingFound_->hide();
    makeList();
    foot_->addWidget(makeButtons());
    foot_->addWidget(field_);
    foot_->addWidget(makeQuestion());
    foot_->setFixedHeight(footHeight);
    auto* places =
        new PlainLabel(tr("Keys alone or with Shift go by their place: they are named as a US keyboard "
                      "prints them. With Ctrl, Alt or Meta they go by what they print."),
                   this);
    places->setWordWrap(true);
    places->setFont(theme::smallFont());
    places->setForegroundRole(QPalette::PlaceholderText);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 0);
    layout->setSpacing(8);
    layout->addWidget(search_);
    layout->addWidget(list_, 1);
    layout->addWidget(foot_);
    layout->addWidget(places);

    connect(search_, &QLineEdit::textChanged, this, &KeysPage::show);
    connect(search_, &QLineEdit::returnPressed, list_, qOverload<>(&QWidget::setFocus));
    connect(list_, &QTreeWidget::currentItemChanged, this, &KeysPage::showChosen);
    connect(list_, &QTreeWidget::itemActivated, this, [this] { listen(Wish::change); });
    connect(field_, &KeyField::pressed, this, &KeysPage::taken);
    connect(field_, &KeyField::cancelled, this, &KeysPage::done);
    // Later: the keyboard also leaves while another page of the foot is being shown.
    connect(
        field_, &KeyField::left, this,
        [this] {
            if (foot_->currentWidget() == field_) showChosen();
        },
        Qt::QueuedConnection);
    connect(&keys_, &KeyMap::changed, this, &KeysPage::showKeys);
    for (const Preference<QString>& name : preferences.statusNames)
        connect(&name, &PreferenceItem::changed, this, &KeysPage::showKeys);
    showKeys();
    choose(viewerTable().front().id);
}

void KeysPage::makeList() {
    list_->setObjectName(QStringLiteral("keyList"));
    list_->setAccessibleName(tr("Commands and their keys"));
    list_->setColumnCount(2);
    list_->setHeaderLabels({tr("Command"), tr("Keys")});
    list_->setRootIsDecorated(false);
    list_->setItemsExpandable(false);
    list_->setUniformRowHeights(true);
    list_->setIndentation(12);
    list_->setTextElideMode(Qt::ElideMiddle);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    addCommands(tr("Viewer"), viewerTable(), viewerMenus());
    addCommands(tr("Library"), libraryTable(), libraryMenus());
    list_->expandAll();
}

void KeysPage::addCommands(const QString& window, const CommandTable& table, const std::vector<Menu>& menus) {
    QSet<QString> listed;
    const auto add = [&](QTreeWidgetItem* section, const QString& id) {
        if (listed.contains(id)) return;
        listed.insert(id);
        auto* item = new QTreeWidgetItem(section);
        item->setData(0, idRole, id);
        item->setFont(1, theme::numberFont());
        item->setSizeHint(0, {0, 24});
    };
    for (const Menu& menu : menus) {
        auto* section = new QTreeWidgetItem(list_, {tr("%1: %2").arg(window, withoutMnemonic(menu.title))});
        section->setFlags(Qt::ItemIsEnabled);
        section->setFirstColumnSpanned(true);
        section->setForeground(0, theme::dimText);
        section->setSizeHint(0, {0, 28});
        const auto ids = menu.commands();
        for (const QString& id : ids)
            add(section, id);
    }
    // What stands in no menu comes last.
    for (const Command& command : table)
        add(list_->topLevelItem(list_->topLevelItemCount() - 1), command.id);
}

QWidget* KeysPage::makeButtons() {
    auto* buttons = new QWidget(this);
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    const auto add = [&](const char* name, const QString& title, const QString& hint) {
        auto* button = new QPushButton(title, buttons);
        button->setObjectName(QLatin1String(name));
        button->setToolTip(plain::toolTip(hint));
        button->setAutoDefault(false);
        layout->addWidget(button);
        return button;
    };
    change_ = add("changeKey", tr("Chan&ge Key…"), tr("Press another key instead of the command's own"));
    add_ = add("addKey", tr("&Add Key…"), tr("Press a further key for the command"));
    clear_ = add("clearKey", tr("&No Key"), tr("The command has no key any more"));
    reset_ = add("resetKey", tr("Rese&t"), {});
    layout->addStretch();
    resetAll_ =
        add("resetKeys", tr("Reset All &Keys"), tr("Every command gets back the keys that it had at first"));
    connect(change_, &QPushButton::clicked, this, [this] { listen(Wish::change); });
    connect(add_, &QPushButton::clicked, this, [this] { listen(Wish::add); });
    connect(clear_, &QPushButton::clicked, this, [this] { give({}); });
    connect(reset_, &QPushButton::clicked, this, [this] { give(KeyMap::defaultsOf(chosen())); });
    connect(resetAll_, &QPushButton::clicked, this, [this] { keys_.resetAll(); });
    return buttons;
}

QWidget* KeysPage::makeQuestion() {
    auto* asking = new QWidget(this);
    question_ = new PlainLabel(asking);
    question_->setObjectName(QStringLiteral("keyQuestion"));
    question_->setWordWrap(true);
    question_->setStyleSheet(QStringLiteral("QLabel { color: %1; }").arg(theme::warning.name()));
    take_ = new QPushButton(tr("&Take It"), asking);
    take_->setObjectName(QStringLiteral("takeKey"));
    take_->setAutoDefault(true);
    auto* keep = new QPushButton(tr("&Leave It"), asking);
    keep->setObjectName(QStringLiteral("leaveKey"));
    auto* layout = new QHBoxLayout(asking);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(question_, 1);
    layout->addWidget(take_);
    layout->addWidget(keep);
    connect(take_, &QPushButton::clicked, this, [this] {
        keys_.assign(chosen(), asked_);
        done();
    });
    connect(keep, &QPushButton::clicked, this, &KeysPage::done);
    return asking;
}

void KeysPage::show(const QString& words) {
    const QStringList wanted = words.split(u' ', Qt::SkipEmptyParts);
    bool any = false;
    for (int at = 0; at < list_->topLevelItemCount(); ++at) {
        QTreeWidgetItem* section = list_->topLevelItem(at);
        bool shown = false;
        for (int row = 0; row < section->childCount(); ++row) {
            QTreeWidgetItem* item = section->child(row);
            const QString text = section->text(0) + u' ' + item->text(0) + u' ' + item->text(1);
            const bool has = std::all_of(wanted.begin(), wanted.end(), [&](const QString& word) {
                return text.contains(word, Qt::CaseInsensitive);
            });
            item->setHidden(!has);
            if (has && !std::exchange(shown, true) && !std::exchange(any, true)) list_->setCurrentItem(item);
        }
        section->setHidden(!shown);
    }
    nothingFound_->setVisible(!any);
    if (!any) list_->setCurrentItem(nullptr);
    if (wanted.isEmpty()) list_->scrollToItem(list_->currentItem());
}

void KeysPage::showKeys() {
    forEachItem(*list_, [this](QTreeWidgetItem& item) {
        const QString id = item.data(0, idRole).toString();
        item.setText(0, nameOf(id));
        item.setToolTip(0, plain::toolTip(item.text(0)));
        item.setText(1, keys_.label(id));
        const bool changed = keys_.isChanged(id);
        item.setForeground(1, changed ? QBrush(theme::warning) : QBrush(theme::text));
        const QString first = labelOf(KeyMap::defaultsOf(id));
        item.setToolTip(1, plain::toolTip(!changed          ? QString()
                           : first.isEmpty() ? tr("At first: no key")
                                             : tr("At first: %1").arg(first)));
    });
    showChosen();
}

void KeysPage::showChosen() {
    const QString id = chosen();
    foot_->setCurrentIndex(0);
    for (QPushButton* button : {change_, add_})
        button->setEnabled(!id.isEmpty());
    clear_->setEnabled(!keys_.keysOf(id).empty());
    reset_->setEnabled(keys_.isChanged(id));
    const QString first = labelOf(KeyMap::defaultsOf(id));
    reset_->setToolTip(plain::toolTip(first.isEmpty() ? tr("The command had no key at first") : tr("Back to %1").arg(first)));
    resetAll_->setEnabled(keys_.isChanged());
}

void KeysPage::choose(const QString& id) {
    forEachItem(*list_, [&](QTreeWidgetItem& item) {
        if (item.data(0, idRole).toString() == id) list_->setCurrentItem(&item);
    });
}

void KeysPage::listen(Wish wish) {
    if (chosen().isEmpty()) return;
    wish_ = wish;
    field_->setText((wish == Wish::change ? tr("Press the key that “%1” is to have. Esc: leave it.")
                                          : tr("Press a further key for “%1”. Esc: leave it."))
                        .arg(nameOf(chosen())));
    field_->setAccessibleName(field_->text());
    foot_->setCurrentWidget(field_);
    field_->setFocus();
}

void KeysPage::taken(const KeyStroke& stroke) {
    KeyMap::Strokes strokes;
    if (wish_ == Wish::add) strokes = keys_.keysOf(chosen());
    if (std::find(strokes.begin(), strokes.end(), stroke) == strokes.end()) strokes.push_back(stroke);
    give(strokes);
}

void KeysPage::give(const KeyMap::Strokes& strokes) {
    const QString id = chosen();
    if (id.isEmpty()) return;
    const QStringList others = keys_.clashes(strokes, id);
    if (others.isEmpty()) {
        keys_.assign(id, strokes);
        return done();
    }
    asked_ = strokes;
    QStringList names;
    for (const QString& other : others)
        names << tr("“%1”").arg(nameOf(other));
    KeyMap::Strokes clashing = strokes;
    std::erase_if(clashing, [&](const KeyStroke& at) { return keys_.clashes({at}, id).isEmpty(); });
    question_->setText(tr("%1 is the key of %2.").arg(labelOf(clashing), names.join(tr(" and "))));
    take_->setToolTip(plain::toolTip(tr("“%1” gets the key; the other loses it").arg(nameOf(id))));
    foot_->setCurrentIndex(foot_->count() - 1);
    take_->setFocus();
}

void KeysPage::done() {
    showChosen();
    list_->setFocus();
}

QString KeysPage::chosen() const {
    const QTreeWidgetItem* item = list_->currentItem();
    return item ? item->data(0, idRole).toString() : QString();
}

QString KeysPage::nameOf(const QString& id) const {
    const Command* command = findCommand(id);
    return command ? commandName(*command, preferences_) : QString();
}

} // namespace daylark
