#pragma once

#include <QString>

#include <optional>
#include <utility>

namespace daylark {

/// A file that says who works on what stands beside it: host, boot, process and when that process began. It outlives a killed
/// owner, whom the next one knows to be dead by that, if it ran on the same host; one of another host counts as alive, since
/// nobody here can tell. Works on shared folders, where the kernel's own locks may not. Held as long as the object lives.
/// Worker threads.
class OwnerLock {
public:
    struct Taken;
    /// Takes it, or says who holds it.
    [[nodiscard]] static Taken take(const QString& path);

    ~OwnerLock();
    OwnerLock(OwnerLock&& other) noexcept
        : path_(std::exchange(other.path_, {})) {}
    OwnerLock& operator=(OwnerLock&& other) noexcept {
        std::swap(path_, other.path_);
        return *this;
    }

private:
    explicit OwnerLock(QString path)
        : path_(std::move(path)) {}
    QString path_; ///< empty: given on
};

struct OwnerLock::Taken {
    std::optional<OwnerLock> lock; ///< none: somebody else's, or no file can be made there
    QString holder;                ///< the host of the one who holds it; empty: nobody does
};

} // namespace daylark
