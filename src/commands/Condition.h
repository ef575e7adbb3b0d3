#pragma once

#include <QObject>

#include <functional>

namespace daylark {

/// Something that holds or doesn't, which commands are enabled or checked by. It is asked when one of the
/// signals that it follows comes, and says so when the answer differs. Owned by a `CommandSet`; interface
/// thread.
class Condition : public QObject {
    Q_OBJECT
public:
    explicit Condition(std::function<bool()> ask, QObject* parent = nullptr);

    [[nodiscard]] bool holds() const { return holds_; }
    void look(); ///< asks again

    template<class Part, class... Signals>
    Condition& follows(const Part& part, Signals... its) {
        (connect(&part, its, this, [this] { look(); }), ...);
        return *this;
    }

Q_SIGNALS:
    void changed();

private:
    std::function<bool()> ask_;
    bool holds_;
};

} // namespace daylark
