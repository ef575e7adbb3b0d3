#include "ui/desktop/Translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QXmlStreamReader>

namespace daylark {

namespace {

const QString tableFolder = QStringLiteral(":/translations");

QString languageOf(const QString& locale) {
    return locale.section(QLatin1Char('-'), 0, 0).section(QLatin1Char('_'), 0, 0).toLower();
}

} // namespace

QStringList Translations::languages() {
    QStringList found;
    const QStringList tables = QDir(tableFolder).entryList({QStringLiteral("daylark_*.ts")});
    for (const QString& file : tables)
        found << file.section(QLatin1Char('_'), 1).section(QLatin1Char('.'), 0, 0);
    return found;
}

QString Translations::nameOf(const QString& language) {
    QString name = QLocale(language).nativeLanguageName();
    return name.isEmpty() ? language : name.replace(0, 1, name.left(1).toUpper());
}

QString Translations::languageFor(const QString& chosen) {
    const QStringList known = languages();
    if (!chosen.isEmpty()) return known.contains(chosen) ? chosen : QString();
    const QStringList wanted = QLocale::system().uiLanguages();
    for (const QString& locale : wanted) {
        const QString language = languageOf(locale);
        if (known.contains(language)) return language;
        if (language == QLatin1String("en") || language == QLatin1String("c")) return {};
    }
    return {};
}

void Translations::install(const QString& chosen) {
    const QString language = languageFor(chosen);
    if (language.isEmpty()) return;
    auto* toolkit = new QTranslator(qApp);
    if (toolkit->load(QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(toolkit);
    auto* own = new Translations(qApp); // asked before the toolkit's
    if (own->read(tableFolder + QStringLiteral("/daylark_%1.ts").arg(language))) QCoreApplication::installTranslator(own);
}

bool Translations::read(const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly)) return false;
    QXmlStreamReader xml(&in);
    QByteArray source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        if (xml.name() == QLatin1String("source"))
            source = xml.readElementText().toUtf8();
        else if (xml.name() == QLatin1String("translation")) {
            const bool finished = !xml.attributes().hasAttribute(QStringLiteral("type"));
            const QString text = xml.readElementText();
            if (finished && !text.isEmpty()) texts_[source] = text;
        }
    }
    return !xml.hasError();
}

QString Translations::translate(const char*, const char* source, const char*, int n) const {
    if (!source) return {};
    QString text = texts_.value(QByteArray::fromRawData(source, qsizetype(qstrlen(source))));
    return n < 0 ? text : text.replace(QStringLiteral("%n"), QString::number(n));
}

} // namespace daylark
