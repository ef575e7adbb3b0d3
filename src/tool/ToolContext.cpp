#include "tool/ToolContext.h"

#include <cstdio>

namespace daylark::tool {

void ToolContext::print(const QJsonDocument& document) {
    const QByteArray text = document.toJson(QJsonDocument::Indented);
    std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
}

void ToolContext::fail(const QString& path, const QString& whatIsWrong) {
    failed_ = true;
    std::fprintf(stderr, "daylark-tool: %s: %s\n", qUtf8Printable(path), qUtf8Printable(whatIsWrong));
}

} // namespace daylark::tool
