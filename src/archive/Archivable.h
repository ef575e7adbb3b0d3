#pragma once

#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace daylark {

class Encoder;
class Decoder;

/// A record that can stand in a keyed archive as an object of its own class. Shared records (one `Movie` in
/// two playlists) are written once and come back as one object.
class Archivable {
public:
    virtual ~Archivable() = default;
    /// The class name that the archive carries, e.g. "Movie".
    [[nodiscard]] virtual const char* archiveClassName() const = 0;
    virtual void encodeWithCoder(Encoder& coder) const = 0;
    /// Fills a freshly made record. Must tolerate every missing key and every wrong type.
    virtual void initWithCoder(const Decoder& coder) = 0;
};

/// Makes empty records by class name; names that it doesn't know decode to nil.
using ArchiveClasses = std::map<QString, std::function<std::shared_ptr<Archivable>()>>;

/// A list field of a record. A nil list (absent key) is empty and says so: older items are told by it. Adding
/// to a nil list is the caller's wish for a list: set `isNil` to false with it.
template<class T>
struct ObjectList : std::vector<std::shared_ptr<T>> {
    using std::vector<std::shared_ptr<T>>::vector;
    bool isNil = false;
};

} // namespace daylark
