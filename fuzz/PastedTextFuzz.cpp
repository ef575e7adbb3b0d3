// Mark-up from a clipboard: whatever it is, what comes of it is text within its bounds, and quickly.
#include "ui/common/text/PastedText.h"

#include "SeedFolder.h"

#include <QGuiApplication>
#include <QMimeData>

#include <cstdint>
#include <cstdlib>

using namespace daylark;

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv); // documents have fonts
    fuzz::seedCorpus(*argc, *argv, "styles",
                     "<html><body><p style='color:red'>one <b>two</b> <i>three <u>four</u></i></p></body>");
    fuzz::seedCorpus(*argc, *argv, "tables", "<table><tr><td><ul><li>a<ol><li>b</table><img src='file:///dev/zero'>");
    fuzz::seedCorpus(*argc, *argv, "sheet",
                     "<style>p{font:bold 9px x;background:url(file:///dev/zero)}</style><link href=x><p>&lt;&#x1F3AC;");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(bytes), qsizetype(size));
    constexpr qsizetype most = 1000;
    QMimeData source;
    source.setHtml(text);
    source.setText(text);
    const PastedText pasted = PastedText::from(source, most);
    if (pasted.text.length() > most || (pasted.isCut && pasted.text.length() < most - 1)) std::abort();
    if (pasted.text.string().contains(QChar::ObjectReplacementCharacter)) std::abort();
    for (const AttributedString::Run& run : pasted.text.runs())
        if (run.attributes.colour.isValid() || run.attributes.pointSize > 0 || !run.attributes.fontFamily.isNull()) std::abort();
    return 0;
}
