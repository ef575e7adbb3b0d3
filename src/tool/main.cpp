#include "preferences/Preferences.h"
#include "tool/ToolContext.h"

#include <CLI/CLI.hpp>

#include <QGuiApplication>

#include <csignal>
#include <cstdio>
#include <vector>

using namespace daylark;

namespace {

/// "key=value" onto this run's preferences; read as the preference's type.
void overridePreferences(Preferences& preferences, const std::vector<std::string>& assignments) {
    for (const std::string& assignment : assignments) {
        const size_t equals = assignment.find('=');
        if (equals == std::string::npos) throw CLI::ValidationError("--defaults", "needs key=value");
        preferences.overrideForThisRun(QString::fromStdString(assignment.substr(0, equals)),
                                       QString::fromStdString(assignment.substr(equals + 1)));
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // no display is ever needed
    std::signal(SIGXFSZ, SIG_IGN); // files that may not grow are failed writes like others
    // Standard error carries our lines only; what the toolkit has to say about the environment is not for scripts.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg)
            std::fprintf(stderr, "daylark-tool: %s\n", qUtf8Printable(text));
    });
    // The toolkit takes options of its own out of the arguments, --session among them.
    const std::vector<const char*> given(argv, argv + argc);
    QGuiApplication application(argc, argv);
    Preferences preferences(UserDefaults::userFile());
    tool::ToolContext context(preferences, given);

    CLI::App app("Daylark without a window: looks into movies and sessions, prints JSON", "daylark-tool");
    app.require_subcommand(1);
    app.fallthrough();
    std::vector<std::string> assignments;
    app.add_option("--defaults", assignments, "a preference for this run, as key=value; repeatable")
        ->allow_extra_args(false);
    app.parse_complete_callback([&] { overridePreferences(preferences, assignments); });
    addMediaCommands(app, context);
    addTimecodeCommand(app, context);
    addSnapshotCommand(app, context);
    addSessionCommands(app, context);
    addExportCommands(app, context);
    addLinkCommands(app, context);
    addListCommands(app, context);
    addCopyCommands(app, context);
    addRelinkCommand(app, context);
    addAudioCommand(app, context);
    addPortMapCommand(app, context);
    addBenchCommands(app, context);
    try {
        app.parse(int(given.size()), given.data());
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    return context.exitStatus();
}
