#pragma once

#include "platform/Alerts.h"
#include "platform/Desktop.h"
#include "platform/Panels.h"

#include <optional>

namespace daylark {

class DesktopBus;

/// Alerts, panels, pasteboard and file browser of the desktop, in the program's own look. Interface thread.
class DesktopAlerts : public Alerts {
public:
    [[nodiscard]] int run(const Alert& alert) override;
};
/// The desktop's own file dialogs where there is a portal, else the program's.
class DesktopPanels : public Panels {
public:
    explicit DesktopPanels(const DesktopBus& bus)
        : bus_(bus) {}
    [[nodiscard]] QString runSave(const SavePanel& panel) override;
    [[nodiscard]] QStringList runOpen(const OpenPanel& panel) override;

private:
    /// Nothing: no portal, the program's own dialog asks.
    [[nodiscard]] std::optional<QString> saveByPortal(const SavePanel& panel);
    [[nodiscard]] std::optional<QStringList> openByPortal(const OpenPanel& panel);
    [[nodiscard]] static QString withExtension(const SavePanel& panel, const QString& path, const QString& answered);

    const DesktopBus& bus_;
    QString folder_; ///< where the last panel was left
};
class DesktopPasteboard : public Pasteboard {
public:
    void setText(const QString& text) override;
    void setRichText(const QString& html, const QString& plain) override;
    [[nodiscard]] QString text() const override;
};
/// Through org.freedesktop.FileManager1 on D-Bus; else the folder is opened.
class DesktopFileBrowser : public FileBrowser {
public:
    explicit DesktopFileBrowser(const DesktopBus& bus)
        : bus_(bus) {}
    void reveal(const QStringList& paths) override;

private:
    const DesktopBus& bus_;
};

} // namespace daylark
