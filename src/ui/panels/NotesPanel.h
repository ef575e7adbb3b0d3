#pragma once

#include "review/ReviewEdits.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <memory>


namespace daylark {

class PlainLabel;
class RichTextField;
class Preferences;

/// Both notes fields of the movie on screen. What is typed becomes an edit of the record a moment after the
/// last key, and in any case before another movie is taken (`setMovie`), the focus leaves, the window closes
/// or the program ends: no note is ever lost. Owned by the viewer window; interface thread.
class NotesPanel : public QWidget {
    Q_OBJECT
public:
    NotesPanel(ReviewEdits& edits, Preferences& preferences, QWidget* parent = nullptr);
    ~NotesPanel() override;

    void setMovie(const std::shared_ptr<Movie>& movie); ///< null: none
    void setFrame(const QString& text);                 ///< which one is on screen, for whoever writes of it; empty: none
    void flush();                                       ///< writes what was typed into the record
    void focusNotes();                                  ///< the first field takes the keys
    [[nodiscard]] RichTextField* field(NotesField which) const { return fields_[size_t(which)].text; }

private:
    struct Field {
        PlainLabel* title = nullptr;
        RichTextField* text = nullptr;
        bool dirty = false;
    };
    void addField(NotesField which, const QString& name);
    [[nodiscard]] QWidget* formatButtons();
    [[nodiscard]] RichTextField* focusedField() const;
    void load(NotesField which);
    void showTitles();
    void chooseColour();

    ReviewEdits& edits_;
    Preferences& preferences_;
    std::shared_ptr<Movie> movie_;
    std::array<Field, 2> fields_;
    PlainLabel* frame_ = nullptr;
    PlainLabel* status_ = nullptr; ///< what of a text is not here; hidden while there is nothing to say
    RichTextField* last_ = nullptr; ///< the field that had the focus last
    QTimer pause_;
};

} // namespace daylark
