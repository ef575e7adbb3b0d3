#pragma once

#include "model/Movie.h"
#include "model/SmartRules.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace daylark {

/// What smartlists can ask of an item: one line of a table a subject, with how it can be compared and what a person
/// enters. Editor and answer are made of it alone. Constant values; interface thread, which owns the records.
namespace smartQuestion {

/// What a rule's value is, for those who let a person enter it.
enum class Entry { none, status, text, number, pixels, date, days, playlist };

struct Relation {
    const char* word;  ///< as stored
    const char* title; ///< for people
    Entry entry;
};
struct Subject {
    const char* word;
    const char* title;
    std::vector<Relation> relations;
};
[[nodiscard]] const std::vector<Subject>& subjects();
[[nodiscard]] const Subject* findSubject(const QString& word); ///< null for one that this version doesn't know
/// The first one of the subject for a word that it doesn't know.
[[nodiscard]] const Relation& relationOf(const Subject& subject, const QString& word);
/// A rule that asks something at once: "Status is Approved".
[[nodiscard]] SmartRule firstRule(const Subject& subject);

/// An item with the names of the playlists that it stands in.
struct Item {
    const Movie& movie;
    const QStringList& playlists;
};
using Test = std::function<bool(const Item&)>;
/// The question as a test, with texts and numbers read once. A rule with words that nobody knows, or with a value that
/// says nothing, holds for no item; no rules hold for none either.
[[nodiscard]] Test testOf(const SmartRules& rules);

} // namespace smartQuestion

} // namespace daylark
