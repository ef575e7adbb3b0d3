#pragma once

#include "base/Result.h"
#include "base/jobs/CancelFlag.h"

#include <QString>

#include <functional>
#include <memory>

namespace daylark {

enum class PortProtocol { tcp, udp };

/// A port of this machine that is to be reached from outside.
struct PortRequest {
    PortProtocol protocol = PortProtocol::tcp;
    quint16 port = 0;
    quint16 wantedPublic = 0; ///< 0: the same; the router may give another one
    int lifetimeSeconds = 3600;
};

/// What a router gave.
struct PortMapping {
    PortProtocol protocol = PortProtocol::tcp;
    quint16 port = 0; ///< of this machine
    QString publicAddress;
    quint16 publicPort = 0;
    int lifetimeSeconds = 0; ///< as the router says; 0: until it is given back

    bool operator==(const PortMapping&) const = default;
};

/// A router that has answered, by one of the ways of speaking to it. Immutable; its calls wait for the network, seconds at
/// most: worker threads.
class PortRouter {
public:
    virtual ~PortRouter() = default;
    /// Asks for a mapping, or for one that is there to stay longer. Errors: why it refuses, or that it is silent.
    [[nodiscard]] virtual Result<PortMapping> map(const PortRequest& request, const CancelFlag& cancelled) const = 0;
    virtual void unmap(const PortMapping& mapping, const CancelFlag& cancelled) const = 0; ///< as far as it listens
};

/// Looks for the router in one way, for so many milliseconds at most. Errors: why there is none.
using RouterFinder = std::function<Result<std::shared_ptr<const PortRouter>>(int milliseconds, const CancelFlag& cancelled)>;

/// By NAT-PMP, asked of the gateway.
[[nodiscard]] Result<std::shared_ptr<const PortRouter>> findNatPmpRouter(int milliseconds, const CancelFlag& cancelled);
/// By UPnP, asked of everybody on the local network.
[[nodiscard]] Result<std::shared_ptr<const PortRouter>> findUpnpRouter(int milliseconds, const CancelFlag& cancelled);

} // namespace daylark
