#include "net/PortRouter.h"

#include <QByteArray>
#include <QRandomGenerator>

#include <algorithm>

#include <miniupnpc/miniupnpc.h>
#include <miniupnpc/upnpcommands.h>
#include <miniupnpc/upnperrors.h>

namespace daylark {
namespace {

constexpr int conflict = 718, permanentOnly = 725; // the protocol's own numbers

const char* nameOf(PortProtocol protocol) {
    return protocol == PortProtocol::tcp ? "TCP" : "UDP";
}

Error refusal(int code) {
    const char* text = strupnperror(code);
    return {QStringLiteral("the router refuses: %1").arg(text ? QString::fromLatin1(text) : QString::number(code))};
}

class UpnpRouter final : public PortRouter {
public:
    UpnpRouter(QByteArray url, QByteArray service, QByteArray ownAddress)
        : url_(std::move(url))
        , service_(std::move(service))
        , ownAddress_(std::move(ownAddress)) {}

    Result<PortMapping> map(const PortRequest& request, const CancelFlag& cancelled) const override {
        char address[40] = {};
        const int asked = UPNP_GetExternalIPAddress(url_.constData(), service_.constData(), address);
        if (asked != UPNPCOMMAND_SUCCESS) return refusal(asked);
        if (address[0] == 0 || qstrcmp(address, "0.0.0.0") == 0) return Error{QStringLiteral("the router has no public address")};
        PortMapping mapping{request.protocol, request.port, QString::fromLatin1(address),
                            request.wantedPublic ? request.wantedPublic : request.port, request.lifetimeSeconds};
        // Somebody else may have the port; another one will do.
        constexpr int attempts = 6;
        int code = UPNPCOMMAND_UNKNOWN_ERROR;
        for (int attempt = 0; attempt < attempts && !cancelled; ++attempt) {
            code = add(mapping);
            if (code == permanentOnly && mapping.lifetimeSeconds > 0) {
                mapping.lifetimeSeconds = 0;
                code = add(mapping);
            }
            if (code == UPNPCOMMAND_SUCCESS) return mapping;
            if (code != conflict) break;
            constexpr quint32 firstOpen = 49152, behindLast = 65536;
            mapping.publicPort = quint16(QRandomGenerator::global()->bounded(firstOpen, behindLast));
        }
        return cancelled ? Error{QStringLiteral("cancelled")} : refusal(code);
    }
    void unmap(const PortMapping& mapping, const CancelFlag& cancelled) const override {
        if (!cancelled)
            UPNP_DeletePortMapping(url_.constData(), service_.constData(), QByteArray::number(mapping.publicPort).constData(),
                                   nameOf(mapping.protocol), nullptr);
    }

private:
    [[nodiscard]] int add(const PortMapping& mapping) const {
        return UPNP_AddPortMapping(url_.constData(), service_.constData(), QByteArray::number(mapping.publicPort).constData(),
                                   QByteArray::number(mapping.port).constData(), ownAddress_.constData(), "Daylark",
                                   nameOf(mapping.protocol), nullptr, QByteArray::number(mapping.lifetimeSeconds).constData());
    }
    const QByteArray url_, service_, ownAddress_;
};

} // namespace

Result<std::shared_ptr<const PortRouter>> findUpnpRouter(int milliseconds, const CancelFlag& cancelled) {
    // All at once: one kind after the other would take as many times as long.
    const char* const kinds[] = {"urn:schemas-upnp-org:device:InternetGatewayDevice:2",
                                 "urn:schemas-upnp-org:device:InternetGatewayDevice:1",
                                 "urn:schemas-upnp-org:service:WANIPConnection:1",
                                 "urn:schemas-upnp-org:service:WANPPPConnection:1", nullptr};
    constexpr int quietEnd = 1200; // milliseconds without another answer
    int error = UPNPDISCOVER_SUCCESS;
    UPNPDev* devices = upnpDiscoverDevices(kinds, std::min(milliseconds, quietEnd), nullptr, nullptr, UPNP_LOCAL_PORT_ANY, 0, 2,
                                           &error, 1);
    if (!devices) return Error{QStringLiteral("no router answers")};
    Result<std::shared_ptr<const PortRouter>> found = Error{QStringLiteral("cancelled")};
    if (!cancelled) {
        UPNPUrls urls = {};
        IGDdatas data = {};
        char ownAddress[64] = {};
        const int kind = UPNP_GetValidIGD(devices, &urls, &data, ownAddress, sizeof ownAddress);
        const bool isRouter = kind == 1 || kind == 2; // connected or, as it believes, not
        found = isRouter ? Result<std::shared_ptr<const PortRouter>>(
                               std::make_shared<UpnpRouter>(urls.controlURL, data.first.servicetype, ownAddress))
                         : Error{QStringLiteral("no router answers")};
        if (kind != 0) FreeUPNPUrls(&urls);
    }
    freeUPNPDevlist(devices);
    return found;
}

} // namespace daylark
