#include "ui/library/search/SmartRulesPanel.h"

#include "app/PlaylistController.h"
#include "app/playlists/SmartQuestion.h"
#include "model/StatusCodes.h"
#include "preferences/Preferences.h"
#include "ui/common/PlainLabel.h"
#include "ui/common/Theme.h"

#include <QCoreApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace daylark {

using smartQuestion::Entry;

namespace {

QToolButton* iconButton(const QString& icon, const QString& name, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setIcon(theme::icon(icon));
    button->setAutoRaise(true);
    button->setMinimumSize(24, 24);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(plain::toolTip(name));
    button->setAccessibleName(name);
    return button;
}

void choose(QComboBox* box, const QString& data) {
    box->setCurrentIndex(box->findData(data));
}

} // namespace

// A rule

SmartRuleRow::SmartRuleRow(PlaylistController& controller, const SmartRule& rule, QWidget* parent)
    : QWidget(parent)
    , controller_(controller)
    , rule_(rule)
    , subject_(new QComboBox(this))
    , relation_(new QComboBox(this))
    , remove_(iconButton(QStringLiteral("remove"), tr("Remove this rule"), this)) {
    subject_->setAccessibleName(tr("What the rule looks at"));
    relation_->setAccessibleName(tr("How it compares"));
    // Other words come with another subject: all of them are read.
    relation_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    relation_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    for (const smartQuestion::Subject& each : smartQuestion::subjects())
        subject_->addItem(QCoreApplication::translate("Words", each.title), QLatin1String(each.word));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(subject_);
    layout->addWidget(relation_);
    layout->addWidget(remove_);
    choose(subject_, rule_.subject);
    fillRelations();
    makeEditor();
    connect(subject_, &QComboBox::activated, this, [this] {
        if (const auto* subject = smartQuestion::findSubject(subject_->currentData().toString()))
            rule_ = smartQuestion::firstRule(*subject);
        fillRelations();
        makeEditor();
        Q_EMIT edited();
    });
    connect(relation_, &QComboBox::activated, this, [this] {
        rule_.relation = relation_->currentData().toString();
        makeEditor();
        Q_EMIT edited();
    });
}

void SmartRuleRow::fillRelations() {
    relation_->clear();
    const auto* subject = smartQuestion::findSubject(rule_.subject);
    if (!subject) { // of a later version: it stays as it is
        relation_->addItem(rule_.relation, rule_.relation);
        return;
    }
    for (const smartQuestion::Relation& each : subject->relations)
        relation_->addItem(QCoreApplication::translate("Words", each.title), QLatin1String(each.word));
    choose(relation_, rule_.relation);
}

void SmartRuleRow::setValue(const QString& value) {
    if (rule_.value == value) return;
    rule_.value = value;
    Q_EMIT edited();
}

void SmartRuleRow::makeEditor() {
    if (editor_) {
        editor_->hide();
        editor_->deleteLater();
    }
    editor_ = newEditor();
    editor_->setAccessibleName(tr("What it is compared with"));
    static_cast<QHBoxLayout*>(layout())->insertWidget(2, editor_, 1);
    editor_->show();
}

QWidget* SmartRuleRow::newEditor() {
    const auto* subject = smartQuestion::findSubject(rule_.subject);
    const Entry entry = subject ? smartQuestion::relationOf(*subject, rule_.relation).entry : Entry::text;
    switch (entry) {
    case Entry::none:
        return new QWidget(this);
    case Entry::status: {
        auto* box = new QComboBox(this);
        box->addItem(tr("none"), QString::number(status::none));
        for (const QString& code : status::codes())
            box->addItem(theme::icon(status::flagImageName(code)), controller_.preferences().statusName(code), code);
        choose(box, rule_.value);
        connect(box, &QComboBox::activated, this, [this, box] { setValue(box->currentData().toString()); });
        return box;
    }
    case Entry::playlist: {
        auto* box = new QComboBox(this);
        box->setEditable(true);
        for (const auto& playlist : controller_.library().playlists())
            if (playlist->name.size() <= plain::lineLength && !playlist->asksRules() &&
                !playlist->isType(playlistType::divider) && box->findText(playlist->name) < 0)
                box->addItem(playlist->name);
        box->setCurrentText(rule_.value);
        box->setMinimumContentsLength(12);
        connect(box, &QComboBox::currentTextChanged, this, &SmartRuleRow::setValue);
        return box;
    }
    case Entry::date: {
        auto* date = new QDateEdit(QDate::fromString(rule_.value, Qt::ISODate), this);
        date->setCalendarPopup(true);
        date->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
        connect(date, &QDateEdit::dateChanged, this,
                [this](QDate day) { setValue(day.toString(Qt::ISODate)); });
        return date;
    }
    case Entry::days: {
        auto* days = new QSpinBox(this);
        days->setRange(1, 3650);
        days->setValue(rule_.value.toInt());
        connect(days, &QSpinBox::valueChanged, this, [this](int count) { setValue(QString::number(count)); });
        return days;
    }
    case Entry::text:
    case Entry::number:
    case Entry::pixels:
        break;
    }
    auto* field = new QLineEdit(rule_.value, this);
    field->setMinimumWidth(160);
    if (entry == Entry::number) field->setPlaceholderText(QStringLiteral("23.976"));
    if (entry == Entry::pixels) field->setPlaceholderText(QStringLiteral("1920 x 1080"));
    connect(field, &QLineEdit::textEdited, this, &SmartRuleRow::setValue);
    return field;
}

// The panel

SmartRulesPanel::SmartRulesPanel(PlaylistController& controller, const std::shared_ptr<Playlist>& smartlist,
                                 QWidget* parent)
    : QDialog(parent)
    , controller_(controller)
    , smartlist_(smartlist)
    , match_(new QComboBox(this))
    , list_(new QVBoxLayout)
    , count_(new PlainLabel(this)) {
    setObjectName(QStringLiteral("smartRulesPanel"));
    setMinimumWidth(520);
    match_->addItem(tr("all"), false);
    match_->addItem(tr("any"), true);
    match_->setAccessibleName(tr("How many of the rules must hold"));
    auto* add = iconButton(QStringLiteral("add"), tr("Another rule"), this);
    add->setObjectName(QStringLiteral("addRuleButton"));
    auto* close = new QPushButton(tr("Close"), this);
    close->setDefault(true);
    auto* head = new QHBoxLayout;
    head->addWidget(new PlainLabel(tr("Items of all playlists for which"), this));
    head->addWidget(match_);
    head->addWidget(new PlainLabel(tr("of these hold:"), this));
    head->addStretch();
    auto* foot = new QHBoxLayout;
    foot->addWidget(add);
    foot->addWidget(count_);
    foot->addStretch();
    foot->addWidget(close);
    list_->setSpacing(4);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(8);
    layout->addLayout(head);
    layout->addLayout(list_);
    layout->addLayout(foot);
    layout->setSizeConstraint(QLayout::SetMinAndMaxSize);

    connect(add, &QToolButton::clicked, this, [this] {
        addRow(smartQuestion::firstRule(smartQuestion::subjects().front()));
        store();
    });
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    connect(match_, &QComboBox::activated, this, &SmartRulesPanel::store);
    Library& library = controller_.library();
    connect(&library, &Library::playlistsChanged, this, &SmartRulesPanel::follow);
    connect(&library, &Library::playlistUpdated, this, [this](const std::shared_ptr<Playlist>& playlist) {
        if (playlist == smartlist_.lock()) follow();
    });
    follow();
    showRules(smartlist->smartRules);
}

/// The list may have been renamed, removed, or its rules been taken back.
void SmartRulesPanel::follow() {
    const auto smartlist = smartlist_.lock();
    const auto& playlists = controller_.library().playlists();
    if (!smartlist || std::find(playlists.begin(), playlists.end(), smartlist) == playlists.end()) {
        close();
        return;
    }
    setWindowTitle(plain::windowTitle(tr("Rules of %1").arg(plain::line(smartlist->name))));
    if (!filling_ && !(smartlist->smartRules == shownRules())) showRules(smartlist->smartRules);
    refreshCount();
}

SmartRules SmartRulesPanel::shownRules() const {
    SmartRules rules;
    rules.any = match_->currentData().toBool();
    for (const SmartRuleRow* row : rows_)
        rules.rules.push_back(row->rule());
    return rules;
}

void SmartRulesPanel::showRules(const SmartRules& rules) {
    for (SmartRuleRow* row : rows_) {
        row->hide();
        row->deleteLater();
    }
    rows_.clear();
    match_->setCurrentIndex(rules.any ? 1 : 0);
    for (const SmartRule& rule : rules.rules)
        addRow(rule);
}

void SmartRulesPanel::addRow(const SmartRule& rule) {
    auto* row = new SmartRuleRow(controller_, rule, this);
    rows_.push_back(row);
    list_->addWidget(row);
    connect(row, &SmartRuleRow::edited, this, &SmartRulesPanel::store);
    connect(row->removeButton(), &QToolButton::clicked, this, [this, row] {
        std::erase(rows_, row);
        row->hide();
        row->deleteLater();
        store();
    });
}

void SmartRulesPanel::store() {
    const auto smartlist = smartlist_.lock();
    if (!smartlist) return;
    filling_ = true;
    controller_.playlistEditing().setRules(smartlist, shownRules());
    filling_ = false;
    refreshCount();
}

void SmartRulesPanel::refreshCount() {
    const auto smartlist = smartlist_.lock();
    if (!smartlist) return;
    const size_t items = controller_.library().itemsOf(*smartlist).size();
    count_->setText(items == 1 ? tr("1 item") : tr("%1 items").arg(items));
}

} // namespace daylark
