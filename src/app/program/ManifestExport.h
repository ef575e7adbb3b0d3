#pragma once

#include <QObject>
#include <QString>

namespace daylark {

class ExportWriter;
class Library;
class Panels;
class SessionFiles;

/// "Export Playlist Manifest...": the items shown, in their order, to a file that a person chooses. Nothing without a selected
/// list. Interface thread; the file is the writer's.
class ManifestExport : public QObject {
    Q_OBJECT
public:
    struct Surroundings {
        Library& library;
        SessionFiles& sessionFiles; ///< whose title is the session's name
        Panels& panels;
        ExportWriter& writer;
    };
    explicit ManifestExport(const Surroundings& surroundings, QObject* parent = nullptr);
    void exportPlaylistManifest();

private:
    Surroundings surroundings_;
};

} // namespace daylark
