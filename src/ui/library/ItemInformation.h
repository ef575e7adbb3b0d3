#pragma once

#include <QHash>
#include <QWidget>

class QVBoxLayout;

namespace daylark {

class PlainLabel;
class Library;
class MoviesModel;

/// The item information box: the facts of the selected item, or what several selected ones come to. Interface
/// thread.
class ItemInformation : public QWidget {
    Q_OBJECT
public:
    ItemInformation(Library& library, const MoviesModel& model, QWidget* parent = nullptr);
    void refresh();

private:
    void show(const QString& fact, const QString& value);

    Library& library_;
    const MoviesModel& model_;
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
