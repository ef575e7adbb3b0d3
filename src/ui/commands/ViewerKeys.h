#pragma once

#include "ui/commands/WindowKeys.h"

namespace daylark {

class ViewerKeyboard;

/// Brings the keys of the viewer's window and of every panel about it to the viewer. Those with Ctrl, Alt or
/// Meta stay shortcuts, and what a slider or list goes by in its panel stays with it.
class ViewerKeys : public WindowKeys {
    Q_OBJECT
public:
    ViewerKeys(QWidget& window, ViewerKeyboard& keyboard);

protected:
    [[nodiscard]] bool isOurs(const QWidget& widget) const override;
    [[nodiscard]] bool takes(QWidget& widget, QKeyEvent& event, bool press) override;

private:
    ViewerKeyboard& keyboard_;
};

} // namespace daylark
