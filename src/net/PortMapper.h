#pragma once

#include "base/jobs/WorkQueue.h"
#include "net/PortRouter.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace daylark {

/// A port of this machine that is reached from outside: asks the local router for it in every known way side by side, takes the
/// first that answers, has it stay before it ends, asks anew when the router has taken it back or was gone, and gives it back.
/// Nothing goes into the network before somebody asks. Owned by whoever needs the port; its thread's event loop runs it, the
/// asking is done by workers. The destructor gives the port back and waits for that, a few seconds at most.
class PortMapper : public QObject {
    Q_OBJECT
public:
    /// Milliseconds, but for the lifetime.
    struct Timing {
        int lifetimeSeconds = 3600; ///< asked for
        int renewal = 20000;        ///< at the latest: routers forget earlier than they promise
        int limit = 4500;           ///< then nobody has answered
        int pause = 5000;           ///< between two searches for a router that was there
    };
    explicit PortMapper(QObject* parent = nullptr);
    PortMapper(const Timing& timing, std::vector<RouterFinder> ways, QObject* parent = nullptr);
    ~PortMapper() override;

    /// Ends in `mapped` or `failed`. What was asked for before is given back.
    void request(PortProtocol protocol, quint16 port);
    void release();
    [[nodiscard]] const std::optional<PortMapping>& mapping() const { return mapping_; }

Q_SIGNALS:
    void mapped(const daylark::PortMapping& mapping); ///< the port is there, or has another address or number now
    void failed(const QString& reason); ///< there is no port to be had; nothing more happens
    void lost(const QString& reason);   ///< it was there; it is being asked for again until `release`

private:
    using Router = std::shared_ptr<const PortRouter>;
    void search();
    void found(quint64 searched, const Result<Router>& router);
    void askNext();
    void ask(const Router& router, quint16 wantedPublic);
    void answered(quint64 searched, const Router& router, const Result<PortMapping>& answer);
    void hold(const PortMapping& mapping);
    void nothingFound();
    void endSearch();

    const Timing timing_;
    const std::vector<RouterFinder> ways_;
    std::optional<PortRequest> request_;
    std::optional<PortMapping> mapping_;
    bool hadOne_ = false; ///< since the request
    Router router_;       ///< which gave the mapping
    quint64 search_ = 0;  ///< answers of earlier ones are too late
    std::shared_ptr<CancelFlag> cancelled_; ///< of the search
    std::vector<Router> ready_;             ///< found, not asked yet
    int looking_ = 0;
    bool asking_ = false;
    QString reason_;
    QTimer limit_, renewal_, pause_;
    WorkQueue work_; ///< last: waits for what is under way
};

} // namespace daylark
