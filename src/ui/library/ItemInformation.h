#pragma once

#include <QHash>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QVBoxLayout;

namespace daylark {

class ItemFacts;
class Library;
class Movie;
class MoviesModel;
class Preferences;
class PlainLabel;

/// The item information box: the facts of the selected item; of several, what they come to and what they share. Interface
/// thread.
class ItemInformation : public QWidget {
    Q_OBJECT
public:
    ItemInformation(Library& library, const MoviesModel& model, ItemFacts& facts, const Preferences& preferences,
                    QWidget* parent = nullptr);
    void refresh();

private:
    using Movies = std::vector<std::shared_ptr<Movie>>;
    struct Row {
        QString label;
        std::function<QString(const Movie&)> text; ///< empty: nothing to say
    };
    void makeRows();
    void addColumns(std::initializer_list<int> ids);
    void showOne(const Movie& movie);
    void showSeveral(const Movies& movies);
    void show(const QString& fact, const QString& value);

    Library& library_;
    const MoviesModel& model_;
    ItemFacts& itemFacts_;
    const Preferences& preferences_;
    std::vector<Row> rows_; ///< in their order
    QVBoxLayout* facts_;
    PlainLabel* picture_;
    PlainLabel* title_;
    struct Fact {
        PlainLabel* name;
        PlainLabel* value;
    };
    QHash<QString, Fact> shown_;
};

} // namespace daylark
