#pragma once

#include "base/Result.h"

#include <QImage>
#include <QString>

namespace daylark {

/// Pictures of files, kept where the desktop keeps its own: PNG files below one folder ("$XDG_CACHE_HOME/thumbnails"), named
/// by the address of the file and told apart by size, which say for which state of the file they are. Any program may read,
/// replace or remove them at any time, so what is found is looked at before it is believed. Worker threads.
namespace thumbnailStore {

/// For which file, in which state, and of which of its pictures: `picture` is a text of ours, that others' files lack.
struct Key {
    QString path;        ///< absolute
    qint64 modified = 0; ///< seconds since 1970
    QString picture;
};

/// The smallest of the sizes kept (256, 512, 1024 pixels) that is enough for `width` pixels; 1024 for more.
[[nodiscard]] int sideFor(int width);
[[nodiscard]] QString fileOf(const QString& folder, const QString& path, int side);
/// The picture of at least `side` that fits the key; null when there is none.
[[nodiscard]] QImage read(const QString& folder, const Key& key, int side);
/// Written whole or not at all, for its owner alone (0600, folders 0700). `picture` fits `side`.
[[nodiscard]] Result<void> write(const QString& folder, const Key& key, int side, const QImage& picture);

} // namespace thumbnailStore

} // namespace daylark
