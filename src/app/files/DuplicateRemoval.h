#pragma once

#include "model/ItemPlaces.h"

#include <QObject>
#include <QString>

namespace daylark {

class Alerts;
class Library;
class Playlist;
class ReviewEdits;

/// Removes repeated media from what the selected playlist shows: items whose file names are equal. Those with review
/// work are kept before those without. Interface thread.
class DuplicateRemoval : public QObject {
    Q_OBJECT
public:
    DuplicateRemoval(Library& library, ReviewEdits& edits, Alerts& alerts, QObject* parent = nullptr);
    void removeDuplicateItems();

private:
    void remove(const std::shared_ptr<Playlist>& playlist, const ItemList& items);

    Library& library_;
    ReviewEdits& edits_;
    Alerts& alerts_;
};

} // namespace daylark
