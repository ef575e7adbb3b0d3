#include "support/TruthReport.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cstdio>

namespace daylark::truth {
namespace {

struct Row {
    std::string clip, codec, container;
    qint64 frames = 0;
    int checked = 0, free = 0, wrong = 0;
    qint64 milliseconds = 0;
};

/// Lives as long as the test program and speaks when its tests are over.
class Table : public ::testing::Environment {
public:
    void add(const char* suite, const Tally& tally) {
        suite_ = suite;
        rows_.push_back({tally.clip(), tally.codec(), tally.container(), tally.frames(), tally.checked(),
                         tally.free(), tally.wrong(), tally.milliseconds()});
    }
    void TearDown() override {
        if (rows_.empty()) return;
        Row total;
        total.clip = "total of " + std::to_string(rows_.size());
        for (const Row& row : rows_) {
            total.frames += row.frames;
            total.checked += row.checked;
            total.free += row.free;
            total.wrong += row.wrong;
            total.milliseconds += row.milliseconds;
        }
        rows_.push_back(total);
        std::fputs(markdown().toUtf8().constData(), stdout);
        write();
    }

private:
    QString markdown() const {
        QString text = QString::asprintf("\n| %-34s | frames | pictures | of these free | wrong |     ms "
                                         "|\n|%s|-------:|---------:|--------------:|------:|-------:|\n",
                                         suite_.c_str(), std::string(36, '-').c_str());
        for (const Row& row : rows_)
            text += QString::asprintf("| %-34s | %6lld | %8d | %13d | %5d | %6lld |\n", row.clip.c_str(),
                                      static_cast<long long>(row.frames), row.checked, row.free, row.wrong,
                                      static_cast<long long>(row.milliseconds));
        return text;
    }
    QByteArray json() const {
        QJsonArray lines;
        for (const Row& row : rows_)
            lines.append(QJsonObject{{QStringLiteral("clip"), QString::fromStdString(row.clip)},
                                     {QStringLiteral("codec"), QString::fromStdString(row.codec)},
                                     {QStringLiteral("container"), QString::fromStdString(row.container)},
                                     {QStringLiteral("frames"), row.frames},
                                     {QStringLiteral("pictures"), row.checked},
                                     {QStringLiteral("free"), row.free},
                                     {QStringLiteral("wrong"), row.wrong},
                                     {QStringLiteral("milliseconds"), row.milliseconds}});
        return QJsonDocument(lines).toJson();
    }
    void write() const {
        const QString name = qEnvironmentVariable("DAYLARK_TRUTH_REPORT");
        if (name.isEmpty()) return;
        const QFileInfo info(name);
        QFile file(
            QStringLiteral("%1/%2-%3.%4")
                .arg(info.path(), info.completeBaseName(), QString::fromStdString(suite_), info.suffix()));
        if (file.open(QIODevice::WriteOnly))
            file.write(info.suffix() == QLatin1String("md") ? markdown().toUtf8() : json());
    }

    std::string suite_;
    std::vector<Row> rows_;
};

} // namespace

void Tally::look(qint64 frame, int expected, bool there, std::optional<int> drawn, const char* manner) {
    ++checked_;
    constexpr int any = 0, none = -1; // as an `Expectation` has them
    free_ += expected == any;
    if (there && (expected == any || (expected == none ? !drawn : drawn == expected))) return;
    ++wrong_;
    if (firstWrong_.size() < 8)
        firstWrong_ << QStringLiteral("%1: frame %2 must show %3 and shows %4")
                           .arg(QString::fromLatin1(manner))
                           .arg(frame)
                           .arg(expected)
                           .arg(!there  ? QStringLiteral("no picture")
                                : drawn ? QString::number(*drawn)
                                        : QStringLiteral("no number"));
}

void Tally::fail(const QString& what) {
    ++wrong_;
    if (firstWrong_.size() < 8) firstWrong_ << what;
}

void report(const char* suite, const Tally& tally) {
    static Table* const table =
        static_cast<Table*>(::testing::AddGlobalTestEnvironment(new Table)); // GoogleTest owns it
    table->add(suite, tally);
}

} // namespace daylark::truth
