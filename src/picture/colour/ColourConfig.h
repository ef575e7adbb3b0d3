#pragma once

#include "base/Result.h"
#include "picture/colour/DisplayProcessor.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace daylark {

/// A colour configuration that has been read and found whole: which spaces, displays, views and looks there are, what its file
/// rules say, and the processors that it makes. Our own one, which needs no file, has the ACES spaces and SDR views, camera
/// logs and the displays of every day. What the environment says of context variables holds. Shared; never changes; any
/// thread. Reading takes a disk's time, and may fail: then there is a sentence that says why.
class ColourConfig {
public:
    /// What our own one is called where others are called by their paths.
    static const QString ownName;
    struct Space {
        QString name;
        QString family; ///< as the configuration groups them; may be empty
    };

    [[nodiscard]] static Result<std::shared_ptr<const ColourConfig>> read(const QString& path);
    /// By this path, or our own by its name; where it is empty by $OCIO; where that is empty our own.
    [[nodiscard]] static Result<std::shared_ptr<const ColourConfig>> chosen(const QString& path);
    [[nodiscard]] static std::shared_ptr<const ColourConfig> own();
    ~ColourConfig();
    ColourConfig(const ColourConfig&) = delete;
    ColourConfig& operator=(const ColourConfig&) = delete;

    [[nodiscard]] const QString& path() const { return path_; } ///< empty: our own
    [[nodiscard]] const std::vector<Space>& spaces() const { return spaces_; }
    [[nodiscard]] const QStringList& displays() const { return displays_; } ///< the default one first
    [[nodiscard]] QStringList views(const QString& display) const;          ///< the default one first; none: no such display
    [[nodiscard]] const QStringList& looks() const { return looks_; }

    /// The space's own name, where this is one, an alias or a role; null: no such space.
    [[nodiscard]] QString spaceNamed(const QString& name) const;
    /// Which space a file rule gives a path; null where no rule but the default one speaks of it.
    [[nodiscard]] QString spaceByRule(const QString& path) const;
    [[nodiscard]] QString spaceOfLight() const; ///< what pictures proportional to light are taken for
    /// What is known of where a picture is from.
    struct Source {
        QString path;    ///< of its file
        QString ownWord; ///< the space that the file itself names; null: none
        bool isLight = false, isRun = false;
    };
    /// By the file's own word, else by the rules, else as light; null: display-referred, as movies are.
    [[nodiscard]] QString spaceOf(const Source& source) const;

    /// The transform with every name that this configuration does not have put in its place by a default: what was
    /// remembered with another configuration. An input space that it does not have stays, and makes no processor.
    [[nodiscard]] DisplayTransform fitted(DisplayTransform transform) const;
    /// Takes a moment (files of tables are read, a quick form is made): on a worker.
    [[nodiscard]] Result<std::shared_ptr<const DisplayProcessor>> processor(const DisplayTransform& transform) const;

private:
    struct Library;
    ColourConfig(QString path, std::unique_ptr<Library> library);

    QString path_;
    std::unique_ptr<Library> library_;
    std::vector<Space> spaces_;
    QStringList displays_, looks_;
};

} // namespace daylark
