#pragma once

#include <QHash>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace daylark {

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
    QLabel* picture_;
    QLabel* title_;
    struct Fact {
        QLabel* name;
        QLabel* value;
    };
    QHash<QString, Fact> shown_;
};

} // namespace daylark
