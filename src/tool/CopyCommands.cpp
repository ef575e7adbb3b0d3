#include "export/media/BundleFolder.h"
#include "export/media/GatheredMedia.h"
#include "tool/SessionItem.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

#include <memory>

namespace daylark::tool {
namespace {

QJsonObject failureJson(const QString& path, const QString& reason) {
    return {{QStringLiteral("path"), path}, {QStringLiteral("reason"), reason}};
}

void gather(ToolContext& context, const QString& path, int playlistNumber, const std::vector<int>& numbers,
            const QString& folder) {
    const auto items = findItems(context, path, playlistNumber, numbers);
    if (!items) return;
    if (!QDir().mkpath(folder)) return context.fail(folder, QStringLiteral("cannot be made"));
    const GatherReport report = gatherMedia(gatherSources(items->movies, context.preferences().networkMode()), folder);
    QJsonArray copied, skipped, failed;
    for (const QString& one : report.copied)
        copied.append(one);
    for (const auto& one : report.skipped)
        skipped.append(one.path);
    for (const auto& one : report.failed) {
        failed.append(failureJson(one.path, one.reason));
        context.fail(one.path, one.reason);
    }
    context.print(QJsonDocument(QJsonObject{{QStringLiteral("copied"), copied},
                                            {QStringLiteral("skipped"), skipped},
                                            {QStringLiteral("failed"), failed},
                                            {QStringLiteral("copiedBytes"), report.copiedBytes}}));
}

void bundle(ToolContext& context, const SessionItemArguments& item, const QString& folder) {
    const std::optional<SessionItem> found = findItem(context, item);
    if (!found) return;
    const BundleReport report = writeBundleFolder(BundleSource::of(found->movie), folder);
    QJsonArray failed;
    if (report.end == BundleReport::End::failed) {
        failed.append(failureJson(report.path, report.reason));
        context.fail(report.path, report.reason);
    }
    context.print(QJsonDocument(
        QJsonObject{{QStringLiteral("copiedBytes"), report.copiedBytes}, {QStringLiteral("failed"), failed}}));
}

} // namespace

void addCopyCommands(CLI::App& app, ToolContext& context) {
    struct Arguments {
        std::string file, to;
        int playlist = 1;
        std::vector<int> items;
        SessionItemArguments item;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* gathering = app.add_subcommand("gather", "Copies a playlist's media into one folder");
    gathering->footer("Example: daylark-tool gather day.dls --playlist 1 --to /media/drive/day");
    gathering->add_option("FILE", arguments->file, "the session file")->required();
    gathering->add_option("--playlist", arguments->playlist, "which playlist, counted from 1")->required();
    gathering->add_option("--items", arguments->items, "which items of it, e.g. 1,3; default: all")->delimiter(',');
    gathering->add_option("--to", arguments->to, "the folder; made when it isn't there")->required();
    gathering->callback([=, &context] {
        gather(context, QString::fromStdString(arguments->file), arguments->playlist, arguments->items,
               QString::fromStdString(arguments->to));
    });

    CLI::App* bundling = app.add_subcommand("bundle", "One movie with its review as a folder for somebody else");
    bundling->footer("Example: daylark-tool bundle day.dls --playlist 1 --item 2 --to A002.dlm");
    arguments->item.addTo(*bundling);
    bundling->add_option("--to", arguments->to, "the bundle's folder, *.dlm")->required();
    bundling->callback(
        [=, &context] { bundle(context, arguments->item, QString::fromStdString(arguments->to)); });
}

} // namespace daylark::tool
