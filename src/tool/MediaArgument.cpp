#include "tool/MediaArgument.h"

#include "media/sequence/RunFiles.h"
#include "viewer/RunPreferences.h"

namespace daylark::tool {

std::optional<QString> mediaArgument(ToolContext& context, const std::string& typed, const std::string& layer) {
    const QString path = QString::fromStdString(typed);
    const Result<QString> media = mediaMeantBy(path, runViewOf(context.preferences()), QString::fromStdString(layer));
    if (media) return *media;
    context.fail(path, media.error().text);
    return std::nullopt;
}

std::optional<qint64> frameOfNumber(ToolContext& context, const QString& media, qint64 number) {
    const std::optional<RunAddress> run = RunAddress::of(media);
    const auto frame = run ? run->movie.run.frameOf(number) : std::nullopt;
    if (frame) return *frame + 1;
    context.fail(pathOfAddress(media), run ? QStringLiteral("has no frame of the number %1").arg(number)
                                           : QStringLiteral("has no numbers of its own"));
    return std::nullopt;
}

} // namespace daylark::tool
