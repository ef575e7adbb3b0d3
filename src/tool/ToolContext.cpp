#include "tool/ToolContext.h"

#include "model/runs/MovieRun.h"
#include "base/FolderEntries.h"

#include <algorithm>
#include <cstdio>

namespace daylark::tool {

ToolContext::ToolContext(Preferences& preferences, const std::vector<const char*>& given)
    : preferences_(preferences) {
    for (const char* argument : given)
        if (QByteArray bytes(argument); !bytes.isValidUtf8()) notTexts_.push_back(std::move(bytes));
}

void ToolContext::print(const QJsonDocument& document) {
    const QByteArray text = document.toJson(QJsonDocument::Indented);
    std::fwrite(text.constData(), 1, size_t(text.size()), stdout);
}

void ToolContext::fail(const QString& path, const QString& whatIsWrong) {
    failed_ = true;
    const auto lost = std::find_if(notTexts_.begin(), notTexts_.end(),
                                   [&path](const QByteArray& bytes) { return path.endsWith(QString::fromUtf8(bytes)); });
    const bool isLost = lost != notTexts_.end();
    std::fprintf(stderr, "daylark-tool: %s: %s\n", qUtf8Printable(isLost ? shownName(*lost) : pathOfAddress(path)),
                 isLost ? "left out, not named in UTF-8" : qUtf8Printable(whatIsWrong));
}

} // namespace daylark::tool
