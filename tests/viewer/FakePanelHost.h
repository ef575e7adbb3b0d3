#pragma once

#include "viewer/display/ViewerPanels.h"

#include <map>
#include <set>

namespace daylark {

/// Panels that are shown nowhere and remember what was done to them.
class FakePanelHost : public PanelHost {
public:
    [[nodiscard]] bool isPanelVisible(ViewerPanel panel) const override { return visible.contains(panel); }
    void setPanelVisible(ViewerPanel panel, bool show) override {
        if (show)
            visible.insert(panel);
        else
            visible.erase(panel);
    }
    [[nodiscard]] QRect panelFrame(ViewerPanel panel) const override { return frames.at(panel); }
    void setPanelFrame(ViewerPanel panel, const QRect& frame) override { frames[panel] = frame; }
    [[nodiscard]] bool isPanelDocked(ViewerPanel panel) const override { return docked.contains(panel); }
    void setPanelDocked(ViewerPanel panel, bool dock) override {
        if (dock)
            docked.insert(panel);
        else
            docked.erase(panel);
    }
    void makeRoomFor(const std::vector<ViewerPanel>& panels) override { roomMadeFor += panels.size(); }
    [[nodiscard]] QByteArray arrangement() const override {
        QByteArray names;
        for (const ViewerPanel panel : docked)
            names += ViewerPanels::layoutName(panel).toUtf8() + ' ';
        return names;
    }
    void restoreDocking(const QByteArray& arrangement) override {
        docked.clear();
        for (const auto& [panel, frame] : frames)
            if (arrangement.contains(ViewerPanels::layoutName(panel).toUtf8())) docked.insert(panel);
    }
    [[nodiscard]] bool isViewerMaximised() const override { return maximised; }
    void maximiseViewer() override { maximised = true; }
    [[nodiscard]] QRect viewerFrame() const override { return viewer; }
    void setViewerFrame(const QRect& frame) override {
        viewer = frame;
        maximised = false;
    }
    [[nodiscard]] bool isFullScreen() const override { return fullScreen; }
    void hideCursorUntilMouseMoves() override { ++cursorHidden; }
    void closeColourPanel() override { ++colourPanelClosed; }

    std::set<ViewerPanel> visible, docked;
    std::map<ViewerPanel, QRect> frames{{ViewerPanel::grading, {10, 20, 300, 400}},
                                        {ViewerPanel::drawing, {30, 40, 200, 300}},
                                        {ViewerPanel::bookmarks, {50, 60, 700, 200}},
                                        {ViewerPanel::options, {70, 80, 250, 350}},
                                        {ViewerPanel::notes, {90, 100, 260, 500}},
                                        {ViewerPanel::colour, {110, 120, 260, 300}},
                                        {ViewerPanel::scopes, {130, 140, 400, 320}}};
    QRect viewer{100, 110, 1280, 776};
    bool fullScreen = false, maximised = false;
    size_t roomMadeFor = 0;
    int cursorHidden = 0, colourPanelClosed = 0;
};

} // namespace daylark
