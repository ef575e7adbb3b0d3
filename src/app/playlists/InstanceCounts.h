#pragma once

#include "review/ReviewStore.h"

#include <QObject>

namespace daylark {

/// Keeps the instance count of what a step that is taken back or done again put into lists or took out of them: one less
/// than the places where the record stands. (What is done the first time counts for itself; only the history can bring a
/// count back that belongs to a list which has gone for good since.) Interface thread.
class InstanceCounts : public QObject {
    Q_OBJECT
public:
    explicit InstanceCounts(ReviewStore& store, QObject* parent = nullptr);

private:
    void look(const Edit& edit);

    ReviewStore& store_;
};

} // namespace daylark
