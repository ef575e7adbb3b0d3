#include "net/PortMapper.h"

#include <algorithm>

namespace daylark {

namespace {

constexpr int threads = 4; // one a way, one for what is given back, one for a straggler

} // namespace

PortMapper::PortMapper(QObject* parent)
    : PortMapper(Timing(), {findNatPmpRouter, findUpnpRouter}, parent) {}

PortMapper::PortMapper(const Timing& timing, std::vector<RouterFinder> ways, QObject* parent)
    : QObject(parent)
    , timing_(timing)
    , ways_(std::move(ways))
    , work_(threads) {
    for (QTimer* timer : {&limit_, &renewal_, &pause_})
        timer->setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &PortMapper::nothingFound);
    connect(&pause_, &QTimer::timeout, this, &PortMapper::search);
    connect(&renewal_, &QTimer::timeout, this, [this] {
        ++search_;
        cancelled_ = std::make_shared<CancelFlag>(false);
        ask(router_, mapping_->publicPort);
        limit_.start(timing_.limit);
    });
}

PortMapper::~PortMapper() {
    release();
}

void PortMapper::request(PortProtocol protocol, quint16 port) {
    release();
    request_ = PortRequest{protocol, port, 0, timing_.lifetimeSeconds};
    search();
}

void PortMapper::release() {
    endSearch();
    pause_.stop();
    renewal_.stop();
    request_.reset();
    hadOne_ = false;
    if (!mapping_) return;
    work_.run([router = router_, mapping = *mapping_] {
        const CancelFlag never = false;
        router->unmap(mapping, never);
    });
    mapping_.reset();
    router_.reset();
}

void PortMapper::endSearch() {
    if (cancelled_) *cancelled_ = true;
    cancelled_.reset();
    ++search_;
    ready_.clear();
    looking_ = 0;
    asking_ = false;
    limit_.stop();
}

void PortMapper::search() {
    endSearch();
    cancelled_ = std::make_shared<CancelFlag>(false);
    limit_.start(timing_.limit);
    looking_ = int(ways_.size());
    for (const RouterFinder& find : ways_)
        work_.run([this, find, search = search_, cancelled = cancelled_, limit = timing_.limit] {
            const Result<Router> router = find(limit, *cancelled);
            WorkQueue::deliver(this, [this, search, router] { found(search, router); });
        });
}

void PortMapper::found(quint64 searched, const Result<Router>& router) {
    if (searched != search_) return;
    --looking_;
    if (router)
        ready_.push_back(*router);
    else
        reason_ = router.error().text;
    askNext();
}

void PortMapper::askNext() {
    if (asking_) return;
    if (!ready_.empty()) {
        const Router router = ready_.front();
        ready_.erase(ready_.begin());
        ask(router, mapping_ ? mapping_->publicPort : request_->wantedPublic);
    } else if (looking_ == 0) {
        nothingFound();
    }
}

void PortMapper::ask(const Router& router, quint16 wantedPublic) {
    asking_ = true;
    PortRequest request = *request_;
    request.wantedPublic = wantedPublic;
    work_.run([this, router, request, search = search_, cancelled = cancelled_] {
        const Result<PortMapping> answer = router->map(request, *cancelled);
        if (answer && *cancelled) { // nobody wants it any more
            const CancelFlag never = false;
            router->unmap(*answer, never);
            return;
        }
        WorkQueue::deliver(this, [this, search, router, answer] { answered(search, router, answer); });
    });
}

void PortMapper::answered(quint64 searched, const Router& router, const Result<PortMapping>& answer) {
    if (searched != search_) { // it came while it was being given up
        if (answer && !(mapping_ && mapping_->publicPort == answer->publicPort))
            work_.run([router, mapping = *answer] {
                const CancelFlag never = false;
                router->unmap(mapping, never);
            });
        return;
    }
    asking_ = false;
    if (answer) {
        router_ = router;
        return hold(*answer);
    }
    reason_ = answer.error().text;
    if (mapping_) { // it was to stay; its router may be gone, another one may have come
        mapping_.reset();
        Q_EMIT lost(reason_);
        if (request_) search();
        return;
    }
    askNext();
}

void PortMapper::hold(const PortMapping& mapping) {
    endSearch();
    const bool isNew =
        !mapping_ || mapping_->publicAddress != mapping.publicAddress || mapping_->publicPort != mapping.publicPort;
    mapping_ = mapping;
    hadOne_ = true;
    request_->wantedPublic = mapping.publicPort; // the same one again, should it be lost
    // Half of what was promised, and never later than promises are believed.
    const qint64 half = mapping.lifetimeSeconds > 0 ? qint64(mapping.lifetimeSeconds) * 500 : timing_.renewal;
    renewal_.start(int(std::min<qint64>(half, timing_.renewal)));
    if (isNew) Q_EMIT mapped(mapping);
}

/// Nobody has answered, or all have refused.
void PortMapper::nothingFound() {
    const QString reason = looking_ > 0 || asking_ || reason_.isEmpty() ? QStringLiteral("no router answers") : reason_;
    endSearch();
    if (mapping_) {
        mapping_.reset();
        Q_EMIT lost(reason);
        if (request_) search();
        return;
    }
    if (hadOne_) return pause_.start(timing_.pause);
    request_.reset();
    Q_EMIT failed(reason);
}

} // namespace daylark
