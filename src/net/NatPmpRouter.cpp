#include "net/PortRouter.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <arpa/inet.h>
#include <limits>
#include <sys/select.h>

#include <natpmp.h>

namespace daylark {
namespace {

constexpr int answerLimit = 2000; // milliseconds

Error errorOf(int code) {
    switch (code) {
    case NATPMP_ERR_CANNOTGETGATEWAY:
        return {QStringLiteral("there is no gateway")};
    case NATPMP_ERR_NOGATEWAYSUPPORT:
    case NATPMP_TRYAGAIN:
        return {QStringLiteral("the gateway does not answer")};
    case NATPMP_ERR_NOTAUTHORIZED:
        return {QStringLiteral("the router refuses")};
    case NATPMP_ERR_NETWORKFAILURE:
        return {QStringLiteral("the router has no public address")};
    case NATPMP_ERR_OUTOFRESOURCES:
        return {QStringLiteral("the router has no port left")};
    default:
        return {QStringLiteral("the gateway cannot be asked (%1)").arg(code)};
    }
}

/// One question to the gateway and its answer; asked again in between, as datagrams get lost.
class Conversation {
public:
    explicit Conversation(const CancelFlag& cancelled)
        : cancelled_(cancelled)
        , opened_(initnatpmp(&natpmp_, 0, 0)) {}
    ~Conversation() {
        if (opened_ == 0) closenatpmp(&natpmp_);
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    Result<natpmpresp_t> publicAddress(int milliseconds) {
        if (opened_ != 0) return errorOf(opened_);
        return answer(sendpublicaddressrequest(&natpmp_), NATPMP_RESPTYPE_PUBLICADDRESS, milliseconds);
    }
    Result<natpmpresp_t> mapping(PortProtocol protocol, quint16 port, quint16 publicPort, quint32 seconds) {
        if (opened_ != 0) return errorOf(opened_);
        const bool tcp = protocol == PortProtocol::tcp;
        const int sent = sendnewportmappingrequest(&natpmp_, tcp ? NATPMP_PROTOCOL_TCP : NATPMP_PROTOCOL_UDP, port, publicPort,
                                                   seconds);
        return answer(sent, tcp ? NATPMP_RESPTYPE_TCPPORTMAPPING : NATPMP_RESPTYPE_UDPPORTMAPPING, answerLimit);
    }

private:
    Result<natpmpresp_t> answer(int sent, int type, int milliseconds) {
        if (sent < 0) return errorOf(sent);
        const QDeadlineTimer deadline(milliseconds);
        natpmpresp_t response = {};
        int code = NATPMP_TRYAGAIN;
        while (code == NATPMP_TRYAGAIN && !deadline.hasExpired()) {
            if (cancelled_) return Error{QStringLiteral("cancelled")};
            timeval pause = {};
            getnatpmprequesttimeout(&natpmp_, &pause);
            constexpr qint64 most = 100; // milliseconds between two looks at the flag
            const qint64 wait = std::clamp<qint64>(pause.tv_sec * 1000 + pause.tv_usec / 1000, 1, most);
            pause = {0, wait * 1000};
            fd_set sockets;
            FD_ZERO(&sockets);
            FD_SET(natpmp_.s, &sockets);
            select(natpmp_.s + 1, &sockets, nullptr, nullptr, &pause);
            code = readnatpmpresponseorretry(&natpmp_, &response);
        }
        if (code != 0) return errorOf(code);
        if (response.type != type) return Error{QStringLiteral("the router answers something else")};
        return response;
    }

    const CancelFlag& cancelled_;
    natpmp_t natpmp_ = {};
    const int opened_;
};

Result<QString> addressIn(const Result<natpmpresp_t>& response) {
    if (!response) return response.error();
    const in_addr address = response->pnu.publicaddress.addr;
    char text[INET_ADDRSTRLEN] = {};
    if (address.s_addr == INADDR_ANY || !inet_ntop(AF_INET, &address, text, sizeof text))
        return Error{QStringLiteral("the router has no public address")};
    return QString::fromLatin1(text);
}

class NatPmpRouter final : public PortRouter {
public:
    Result<PortMapping> map(const PortRequest& request, const CancelFlag& cancelled) const override {
        const quint16 wanted = request.wantedPublic ? request.wantedPublic : request.port;
        const auto given =
            Conversation(cancelled).mapping(request.protocol, request.port, wanted, quint32(request.lifetimeSeconds));
        if (!given) return given.error();
        const auto& told = given->pnu.newportmapping;
        if (told.privateport != request.port || told.mappedpublicport == 0)
            return Error{QStringLiteral("the router answers something else")};
        PortMapping mapping{request.protocol, request.port, {}, told.mappedpublicport, 0};
        mapping.lifetimeSeconds = int(std::clamp<quint32>(told.lifetime, 1, quint32(std::numeric_limits<int>::max())));
        const Result<QString> address = addressIn(Conversation(cancelled).publicAddress(answerLimit));
        if (!address) {
            unmap(mapping, cancelled);
            return address.error();
        }
        mapping.publicAddress = *address;
        return mapping;
    }
    void unmap(const PortMapping& mapping, const CancelFlag& cancelled) const override {
        static_cast<void>(Conversation(cancelled).mapping(mapping.protocol, mapping.port, 0, 0));
    }
};

} // namespace

Result<std::shared_ptr<const PortRouter>> findNatPmpRouter(int milliseconds, const CancelFlag& cancelled) {
    const Result<QString> address = addressIn(Conversation(cancelled).publicAddress(milliseconds));
    if (!address) return address.error();
    return std::shared_ptr<const PortRouter>(std::make_shared<NatPmpRouter>());
}

} // namespace daylark
