#pragma once

#include <QToolButton>

namespace daylark {

class Commands;
class ViewerGeometry;

/// Opens the list of zoom and mirror commands; its tooltip says how large the picture is shown. Interface
/// thread.
class ZoomButton : public QToolButton {
    Q_OBJECT
public:
    ZoomButton(const Commands& commands, const ViewerGeometry& geometry, QWidget* parent);

private:
    void showZoom();

    const ViewerGeometry& geometry_;
};

} // namespace daylark
