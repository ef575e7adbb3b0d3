#pragma once

#include <QString>
#include <QStringList>

namespace daylark {

/// The general pasteboard, as text. Interface thread.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    virtual void setText(const QString& text) = 0; ///< clears it first
    /// The same thing twice: each program pastes what it can show.
    virtual void setRichText(const QString& html, const QString& plain) = 0;
    [[nodiscard]] virtual QString text() const = 0;
};

/// The desktop's file browser. Interface thread; returns at once; failures are silent.
class FileBrowser {
public:
    virtual ~FileBrowser() = default;
    virtual void reveal(const QStringList& paths) = 0; ///< shows the files selected in their folders
};

/// Whose machine this is and where the program keeps its own files.
struct SystemPlaces {
    QString loginName;
    QString applicationSupport; ///< the "Daylark" folder of the user's data folder; made when missing, silently
    QString cache; ///< a folder for what can be made anew; nothing is made there before it is needed. Null: none
    /// A folder of the user's alone that lasts as long as the login, when there is one that can be trusted: 0700 and ours. Null:
    /// none.
    QString runtime = {};
    [[nodiscard]] static SystemPlaces current();
};

} // namespace daylark
