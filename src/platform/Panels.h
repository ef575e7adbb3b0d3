#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

namespace daylark {

struct SavePanel {
    QString title;
    QString prompt;            ///< text of the confirming button
    QString proposedName;      ///< file name with extension; may be empty
    QStringList allowedTypes;  ///< extensions; the first is added to a name without one of them
    /// A choice shown under the name (a format pop-up); picking one calls `accessoryChosen` with the title and the name as it
    /// stands, and the answer becomes the name.
    QString accessoryLabel;
    QStringList accessoryTitles;
    QString accessoryCurrent;
    std::function<QString(const QString& title, const QString& name)> accessoryChosen;
    QString nameLabel;    ///< before the name; empty: the panel's own
    bool package = false; ///< it becomes a folder that a person takes for a file: an existing one is chosen, not entered
};

struct OpenPanel {
    QString title;
    QString prompt;
    QStringList allowedTypes;  ///< extensions; empty means all
    QString typesTitle = {};   ///< what these are called; with one, a person can have all files shown instead
    bool chooseFiles = true;
    bool chooseFolders = false;
    bool allowMultiple = false;
    /// A run of numbered pictures is one line, answered by its first picture; a name with marks in it ("sh010.####.exr") may
    /// be typed, and is answered as it is.
    bool runsAreOne = false;

    /// One folder.
    [[nodiscard]] static OpenPanel forFolders(const QString& title, const QString& prompt = {});
};

/// Open and save panels. Interface thread; return when answered. Cancelled: a null path, an empty list.
class Panels {
public:
    virtual ~Panels() = default;
    [[nodiscard]] virtual QString runSave(const SavePanel& panel) = 0;
    [[nodiscard]] virtual QStringList runOpen(const OpenPanel& panel) = 0;
    [[nodiscard]] QString chooseFolder(const QString& title, const QString& prompt = {}); ///< one that there is
};

/// Panels answered by a script: for tests and the headless tool. Without an answer left they are cancelled.
class ScriptedPanels : public Panels {
public:
    std::deque<QString> saveAnswers;
    std::deque<QStringList> openAnswers;
    std::vector<SavePanel> savesShown;
    std::vector<OpenPanel> opensShown;
    [[nodiscard]] QString runSave(const SavePanel& panel) override;
    [[nodiscard]] QStringList runOpen(const OpenPanel& panel) override;
};

} // namespace daylark
