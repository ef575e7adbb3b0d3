#include "app/program/PreferencesTable.h"
#include "platform/UserDefaults.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QGuiApplication>

#include <cstdio>

using namespace daylark;

namespace {

/// "key=value" onto this run's preferences; the text takes the registered default's type.
void overridePreferences(UserDefaults& defaults, const std::vector<std::string>& assignments) {
    for (const std::string& assignment : assignments) {
        const size_t equals = assignment.find('=');
        if (equals == std::string::npos) throw CLI::ValidationError("--defaults", "needs key=value");
        const QString key = QString::fromStdString(assignment.substr(0, equals));
        QVariant value = QString::fromStdString(assignment.substr(equals + 1));
        const QVariant registered = defaults.value(key);
        if (registered.typeId() == QMetaType::Bool)
            value = value.toString() == QLatin1String("YES") || value.toBool();
        else if (registered.isValid() && value.canConvert(registered.metaType()))
            value.convert(registered.metaType());
        defaults.overrideForThisRun(key, value);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // no display is ever needed
    // Standard error carries our lines only; what the toolkit has to say about the environment is not for scripts.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "daylark-tool: %s\n", qUtf8Printable(text));
    });
    QGuiApplication application(argc, argv);
    UserDefaults defaults(UserDefaults::userFile());
    defaults.registerDefaults(preferencesTable());
    tool::ToolContext context(defaults);

    CLI::App app("Daylark without a window: looks into movies and sessions, prints JSON", "daylark-tool");
    app.require_subcommand(1);
    app.fallthrough();
    std::vector<std::string> assignments;
    app.add_option("--defaults", assignments, "a preference for this run, as key=value; repeatable")
        ->allow_extra_args(false);
    app.parse_complete_callback([&] { overridePreferences(defaults, assignments); });
    addMediaCommands(app, context);
    addTimecodeCommand(app, context);
    addSnapshotCommand(app, context);
    addSessionCommands(app, context);
    addExportCommands(app, context);
    addBenchCommands(app, context);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    return context.exitStatus();
}
