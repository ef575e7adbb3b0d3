#pragma once

#include <QColor>
#include <QString>

#include <vector>

namespace daylark {

/// How a run of text looks. Unset fields keep the reader's default.
struct TextAttributes {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    QColor colour = {};      ///< invalid: the default text colour
    QString fontFamily = {}; ///< null: the default family
    double pointSize = 0;    ///< 0: the default size
    bool operator==(const TextAttributes&) const = default;
};

/// Text with styled runs. The invariant: the runs' lengths (UTF-16 units) add up to the text's length,
/// neighbours differ, no run is empty. Any thread; a plain value.
class AttributedString {
public:
    struct Run {
        qsizetype length = 0;
        TextAttributes attributes;
        bool operator==(const Run&) const = default;
    };

    AttributedString() = default;
    explicit AttributedString(const QString& plain);

    /// Adds text at the end; an equal style joins the last run.
    void append(const QString& text, const TextAttributes& attributes = {});

    [[nodiscard]] const QString& string() const { return string_; }
    [[nodiscard]] qsizetype length() const { return string_.size(); }
    [[nodiscard]] const std::vector<Run>& runs() const { return runs_; }
    bool operator==(const AttributedString&) const = default;

private:
    QString string_;
    std::vector<Run> runs_;
};

} // namespace daylark
