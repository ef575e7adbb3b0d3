#pragma once

#include "commands/keys/KeyStroke.h"
#include "ui/common/PlainLabel.h"

namespace daylark {

/// Waits for one key, with its modifiers, and passes it on instead of doing anything with it. Escape and the
/// loss of the keyboard end the waiting. Interface thread.
class KeyField : public PlainLabel {
    Q_OBJECT
public:
    explicit KeyField(QWidget* parent = nullptr);

Q_SIGNALS:
    void pressed(const daylark::KeyStroke& stroke);
    void cancelled(); ///< by Escape
    void left();      ///< the keyboard went elsewhere

protected:
    bool event(QEvent* event) override;
};

} // namespace daylark
