#pragma once

#include "base/Result.h"
#include "preferences/Preferences.h"

#include <QJsonDocument>
#include <QString>
#include <QStringList>

#include <vector>

namespace CLI {
class App;
}

namespace daylark::tool {

/// What every command works with: the preferences of this run, standard output as one JSON document, one line
/// a failure on standard error. Main thread.
class ToolContext {
public:
    /// `given`: the command line, as bytes.
    explicit ToolContext(Preferences& preferences, const std::vector<const char*>& given = {});

    [[nodiscard]] Preferences& preferences() { return preferences_; }
    void print(const QJsonDocument& document);                  ///< the command's one document
    /// "daylark-tool: <path>: <what is wrong>". What was given in other bytes than UTF-8 is told as that: no text opens it.
    void fail(const QString& path, const QString& whatIsWrong);
    [[nodiscard]] int exitStatus() const { return failed_ ? 1 : 0; }

private:
    Preferences& preferences_;
    std::vector<QByteArray> notTexts_; ///< of the command line
    bool failed_ = false;
};

/// Each adds its subcommands; what a subcommand does runs in CLI11's final callback.
void addMediaCommands(CLI::App& app, ToolContext& context);
void addTimecodeCommand(CLI::App& app, ToolContext& context);
void addSnapshotCommand(CLI::App& app, ToolContext& context);
void addSessionCommands(CLI::App& app, ToolContext& context);
void addExportCommands(CLI::App& app, ToolContext& context);
void addLinkCommands(CLI::App& app, ToolContext& context);
void addListCommands(CLI::App& app, ToolContext& context);
void addCopyCommands(CLI::App& app, ToolContext& context);
void addRelinkCommand(CLI::App& app, ToolContext& context);
void addAudioCommand(CLI::App& app, ToolContext& context);
void addPortMapCommand(CLI::App& app, ToolContext& context);
void addBenchCommands(CLI::App& app, ToolContext& context);

} // namespace daylark::tool
