#pragma once

#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/Panels.h"

namespace daylark {

/// Alerts, panels, pasteboard and file browser of the desktop, in the program's own look. Interface thread.
class DesktopAlerts : public Alerts {
public:
    [[nodiscard]] int run(const Alert& alert) override;
};
class DesktopPanels : public Panels {
public:
    [[nodiscard]] QString runSave(const SavePanel& panel) override;
    [[nodiscard]] QStringList runOpen(const OpenPanel& panel) override;

private:
    QString folder_; ///< where the last panel was left
};
class DesktopPasteboard : public Pasteboard {
public:
    void setText(const QString& text) override;
    [[nodiscard]] QString text() const override;
};
/// Through org.freedesktop.FileManager1 on D-Bus; else the folder is opened.
class DesktopFileBrowser : public FileBrowser {
public:
    void reveal(const QStringList& paths) override;
};

} // namespace daylark
