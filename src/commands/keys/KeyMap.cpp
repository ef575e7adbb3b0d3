#include "commands/keys/KeyMap.h"

#include "preferences/Preferences.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace daylark {

namespace {

bool holds(const KeyMap::Strokes& strokes, const KeyStroke& stroke) {
    return std::find(strokes.begin(), strokes.end(), stroke) != strokes.end();
}

bool clash(KeyScope one, KeyScope other) {
    return isWithin(one, other) || isWithin(other, one);
}

template<class Action>
void forEachCommand(const Action& action) {
    for (const CommandTable* table : {&viewerTable(), &libraryTable()})
        for (const Command& command : *table)
            action(command);
}

/// What is readable of the stored text, each key once.
KeyMap::Strokes strokesOf(const QJsonValue& stored) {
    KeyMap::Strokes strokes;
    const QJsonArray texts = stored.toArray();
    for (const QJsonValue& text : texts)
        if (const auto stroke = KeyStroke::fromText(text.toString());
            !stroke.isEmpty() && !holds(strokes, stroke))
            strokes.push_back(stroke);
    return strokes;
}

} // namespace

KeyMap::KeyMap(Preferences& preferences, QObject* parent)
    : QObject(parent)
    , preferences_(preferences) {
    read();
    connect(&preferences.commandKeys, &PreferenceItem::changed, this, [this] {
        read();
        Q_EMIT changed();
    });
}

void KeyMap::read() {
    keys_.clear();
    forEachCommand([this](const Command& command) { keys_[command.id] = {&command}; });
    const QJsonObject stored = QJsonDocument::fromJson(preferences_.commandKeys().toUtf8()).object();
    const auto isChosen = [&](const QString& id) {
        const QJsonValue value = stored.value(id);
        // An empty list says that the command is to have no key; a list of which nothing can be read says
        // nothing.
        return value.isArray() && (value.toArray().isEmpty() || !strokesOf(value).empty());
    };
    const auto add = [this](const Command& command, const Strokes& strokes) {
        Strokes& own = keys_[command.id].strokes;
        for (const KeyStroke& stroke : strokes)
            if (!holds(own, stroke) && clashes({stroke}, command.id).isEmpty()) own.push_back(stroke);
    };
    // What was chosen goes before what the table says, in whatever order both stand.
    forEachCommand([&](const Command& command) {
        if (isChosen(command.id)) add(command, strokesOf(stored.value(command.id)));
    });
    forEachCommand([&](const Command& command) {
        if (!isChosen(command.id)) add(command, command.keys);
    });
}

void KeyMap::store() {
    QJsonObject chosen;
    for (const auto& [id, entry] : keys_) {
        if (entry.strokes == entry.command->keys) continue;
        QJsonArray texts;
        for (const KeyStroke& stroke : entry.strokes)
            texts.append(stroke.text());
        chosen.insert(id, texts);
    }
    if (chosen.isEmpty())
        preferences_.commandKeys.reset();
    else
        preferences_.commandKeys.set(QString::fromUtf8(QJsonDocument(chosen).toJson(QJsonDocument::Compact)));
}

QString KeyMap::commandAt(const KeyStroke& stroke, KeyScope pressedIn) const {
    if (stroke.isEmpty()) return {};
    for (const auto& [id, entry] : keys_)
        if (isWithin(pressedIn, entry.command->scope) && holds(entry.strokes, stroke)) return id; // no other has it there
    return {};
}

const KeyMap::Strokes& KeyMap::keysOf(const QString& id) const {
    static const Strokes none;
    const auto found = keys_.find(id);
    return found != keys_.end() ? found->second.strokes : none;
}

QString KeyMap::label(const QString& id) const {
    QStringList labels;
    for (const KeyStroke& stroke : keysOf(id))
        labels << stroke.label();
    return labels.join(QStringLiteral(" / "));
}

const KeyMap::Strokes& KeyMap::defaultsOf(const QString& id) {
    static const Strokes none;
    const Command* command = findCommand(id);
    return command ? command->keys : none;
}

bool KeyMap::isChanged(const QString& id) const {
    return keysOf(id) != defaultsOf(id);
}

bool KeyMap::isChanged() const {
    return std::any_of(keys_.begin(), keys_.end(), [this](const auto& at) { return isChanged(at.first); });
}

QStringList KeyMap::clashes(const Strokes& strokes, const QString& id) const {
    QStringList others;
    const auto own = keys_.find(id);
    if (own == keys_.end()) return others;
    for (const auto& [other, entry] : keys_) {
        if (other == id || !clash(entry.command->scope, own->second.command->scope)) continue;
        const Strokes& theirs = entry.strokes;
        if (std::any_of(strokes.begin(), strokes.end(),
                        [&](const KeyStroke& at) { return holds(theirs, at); }))
            others << other;
    }
    return others;
}

void KeyMap::assign(const QString& id, const Strokes& strokes) {
    if (!keys_.contains(id)) return;
    const QStringList others = clashes(strokes, id);
    for (const QString& other : others)
        std::erase_if(keys_[other].strokes, [&](const KeyStroke& at) { return holds(strokes, at); });
    keys_[id].strokes = strokes;
    store();
}

void KeyMap::reset(const QString& id) {
    assign(id, defaultsOf(id));
}

void KeyMap::resetAll() {
    preferences_.commandKeys.reset();
}

} // namespace daylark
