#include "ui/desktop/PortalFileChooser.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDialog>
#include <QDir>
#include <QGuiApplication>
#include <QUrl>
#include <QUuid>

namespace daylark {

/// The portal's own structures: a(sa(us)) and a(ssa(ss)s).
struct PortalPattern {
    uint kind = 0; ///< 0: by name, 1: by media type
    QString pattern;
};
struct PortalFilter {
    QString name;
    QList<PortalPattern> patterns;
};
struct PortalWord {
    QString id, text;
};
struct PortalChoice {
    QString id, label;
    QList<PortalWord> words;
    QString chosen;
};

} // namespace daylark

Q_DECLARE_METATYPE(daylark::PortalPattern)
Q_DECLARE_METATYPE(daylark::PortalFilter)
Q_DECLARE_METATYPE(daylark::PortalWord)
Q_DECLARE_METATYPE(daylark::PortalChoice)

namespace daylark {

// Found by the types' namespace, from inside the marshalling.
static QDBusArgument& operator<<(QDBusArgument& out, const PortalPattern& pattern) {
    out.beginStructure();
    out << pattern.kind << pattern.pattern;
    out.endStructure();
    return out;
}

static const QDBusArgument& operator>>(const QDBusArgument& in, PortalPattern& pattern) {
    in.beginStructure();
    in >> pattern.kind >> pattern.pattern;
    in.endStructure();
    return in;
}

static QDBusArgument& operator<<(QDBusArgument& out, const PortalFilter& filter) {
    out.beginStructure();
    out << filter.name << filter.patterns;
    out.endStructure();
    return out;
}

static const QDBusArgument& operator>>(const QDBusArgument& in, PortalFilter& filter) {
    in.beginStructure();
    in >> filter.name >> filter.patterns;
    in.endStructure();
    return in;
}

static QDBusArgument& operator<<(QDBusArgument& out, const PortalWord& word) {
    out.beginStructure();
    out << word.id << word.text;
    out.endStructure();
    return out;
}

static const QDBusArgument& operator>>(const QDBusArgument& in, PortalWord& word) {
    in.beginStructure();
    in >> word.id >> word.text;
    in.endStructure();
    return in;
}

static QDBusArgument& operator<<(QDBusArgument& out, const PortalChoice& choice) {
    out.beginStructure();
    out << choice.id << choice.label << choice.words << choice.chosen;
    out.endStructure();
    return out;
}

static const QDBusArgument& operator>>(const QDBusArgument& in, PortalChoice& choice) {
    in.beginStructure();
    in >> choice.id >> choice.label >> choice.words >> choice.chosen;
    in.endStructure();
    return in;
}

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString choiceId = QStringLiteral("choice");

void registerStructures() {
    qDBusRegisterMetaType<PortalPattern>();
    qDBusRegisterMetaType<QList<PortalPattern>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
    qDBusRegisterMetaType<PortalWord>();
    qDBusRegisterMetaType<QList<PortalWord>>();
    qDBusRegisterMetaType<PortalChoice>();
    qDBusRegisterMetaType<QList<PortalChoice>>();
}

/// By which the desktop puts its dialog before our window.
QString handleOf(const QWidget* window) {
    if (!window || QGuiApplication::platformName() != QLatin1String("xcb")) return QStringLiteral("");
    return QStringLiteral("x11:") + QString::number(quint64(window->winId()), 16);
}

QVariantMap optionsOf(const PortalFileChooser::Request& request, const QString& token) {
    QVariantMap options{{QStringLiteral("handle_token"), token}, {QStringLiteral("modal"), true}};
    if (!request.accept.isEmpty()) options[QStringLiteral("accept_label")] = request.accept;
    if (request.multiple) options[QStringLiteral("multiple")] = true;
    if (request.folders) options[QStringLiteral("directory")] = true;
    if (request.save) options[QStringLiteral("current_name")] = request.name;
    options[QStringLiteral("current_folder")] = QFile::encodeName(request.folder).append('\0');
    if (!request.patterns.isEmpty()) {
        const bool isNamed = !request.patternsTitle.isEmpty();
        PortalFilter filter{isNamed ? request.patternsTitle : request.patterns.join(QLatin1Char(' ')), {}};
        for (const QString& pattern : request.patterns)
            filter.patterns.append({0, pattern});
        QList<PortalFilter> filters{filter};
        if (!request.patternsTitle.isEmpty())
            filters.append({QCoreApplication::translate("DesktopPanels", "All Files"), {{0, QStringLiteral("*")}}});
        options[QStringLiteral("filters")] = QVariant::fromValue(filters);
    }
    if (!request.choiceLabel.isEmpty()) {
        PortalChoice choice{choiceId, request.choiceLabel, {}, request.choice};
        for (const QString& word : request.choices)
            choice.words.append({word, word});
        options[QStringLiteral("choices")] = QVariant::fromValue(QList<PortalChoice>{choice});
    }
    return options;
}

/// One dialog of the portal. Itself never on the screen: it is what keeps the program's windows waiting.
class PortalCall : public QDialog {
    Q_OBJECT
public:
    enum Outcome { failed, answered };

    PortalCall(const QDBusConnection& bus, QWidget* parent)
        : QDialog(parent)
        , bus_(bus) {
        setAttribute(Qt::WA_DontShowOnScreen);
        setWindowModality(Qt::ApplicationModal);
        auto* alive = new QDBusServiceWatcher(portalService, bus, QDBusServiceWatcher::WatchForUnregistration, this);
        connect(alive, &QDBusServiceWatcher::serviceUnregistered, this, [this] { done(failed); });
    }
    /// Before the question is asked: the answer may come first. Any sender, because to look up one waits for the bus; who
    /// doesn't know the token can't send there.
    void listenAt(const QString& path) {
        if (std::exchange(path_, path) == path) return;
        bus_.connect(QString(), path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
                     SLOT(response(uint, QVariantMap)));
    }
    void ask(const QDBusMessage& message) {
        auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* call) {
            const QDBusPendingReply<QDBusObjectPath> reply = *call;
            if (reply.isError())
                done(failed);
            else
                listenAt(reply.value().path()); // older portals choose a path of their own
        });
    }

    PortalFileChooser::Answer answer;

public Q_SLOTS:
    void response(uint code, const QVariantMap& results) {
        const QStringList addresses = code == 0 ? results.value(QStringLiteral("uris")).toStringList() : QStringList();
        for (const QString& address : addresses)
            if (const QUrl url(address); url.isLocalFile()) answer.paths << url.toLocalFile();
        const auto words = qdbus_cast<QList<PortalWord>>(results.value(QStringLiteral("choices")));
        for (const PortalWord& word : words)
            if (word.id == choiceId) answer.choice = word.text;
        done(code == 0 && answer.paths.isEmpty() && !addresses.isEmpty() ? failed : answered);
    }

private:
    QDBusConnection bus_;
    QString path_;
};

} // namespace

std::optional<PortalFileChooser::Answer> PortalFileChooser::run(const Request& request, QWidget* parent) {
    registerStructures();
    const QString token = QStringLiteral("daylark") + QUuid::createUuid().toString(QUuid::Id128);
    const QString sender = bus_.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    PortalCall call(bus_, parent);
    call.listenAt(QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token));
    QDBusMessage message = QDBusMessage::createMethodCall(
        portalService, QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.FileChooser"),
        request.save ? QStringLiteral("SaveFile") : QStringLiteral("OpenFile"));
    message << handleOf(parent) << request.title << optionsOf(request, token);
    call.ask(message);
    if (call.exec() != PortalCall::answered) return std::nullopt;
    return call.answer;
}

} // namespace daylark

#include "PortalFileChooser.moc"
