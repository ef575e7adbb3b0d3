#pragma once

#include <QHash>
#include <QString>
#include <QTranslator>

#include <optional>

namespace daylark {

/// The texts for people in another language, out of the tables that the program carries (translations/*.ts, as the
/// toolkit's own tools write them). A text means the same wherever it stands, so it is found whatever class asks for it.
/// What no table has stays as it is. Installed once, before the first text is asked for; interface thread.
class Translations : public QTranslator {
    Q_OBJECT
public:
    explicit Translations(QObject* parent = nullptr)
        : QTranslator(parent) {}

    [[nodiscard]] static QStringList languages(); ///< "de", "fr": those that there are beside English
    [[nodiscard]] static QString nameOf(const QString& language); ///< "Deutsch"
    /// By what a person chose ("en" is one of them), else by the desktop's languages; empty: as written, in English.
    [[nodiscard]] static QString languageFor(const QString& chosen);
    /// Makes the program, and the toolkit's dialogs where the desktop has them in it, speak the language.
    static void install(const QString& chosen);

    [[nodiscard]] bool read(const QString& file); ///< false: no such table; what it has is added
    [[nodiscard]] qsizetype count() const { return texts_.size(); }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation = nullptr,
                                    int n = -1) const override;
    [[nodiscard]] bool isEmpty() const override { return texts_.isEmpty(); }

private:
    QHash<QByteArray, QString> texts_;
};

} // namespace daylark
