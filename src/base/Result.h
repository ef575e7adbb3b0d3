#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <variant>

namespace daylark {

/// What went wrong, as one sentence without a full stop; made where it happened, worded for people only in app/ and viewer/.
struct Error {
    QString text;
};

/// A value or the reason why there is none. The invariant: exactly one of the two. Any thread.
///
///     Result<Session> session = readSession(path);
///     if (!session) { report(session.error().text); return; }
///     use(*session);
template<class T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return state_.index() == 0; }
    T& operator*() & { return std::get<0>(state_); }
    const T& operator*() const& { return std::get<0>(state_); }
    T&& operator*() && { return std::get<0>(std::move(state_)); }
    T* operator->() { return &std::get<0>(state_); }
    const T* operator->() const { return &std::get<0>(state_); }
    [[nodiscard]] const Error& error() const { return std::get<1>(state_); }

private:
    std::variant<T, Error> state_;
};

/// An operation that only succeeds or fails.
template<>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : error_(std::move(error)) {}

    explicit operator bool() const { return !error_.has_value(); }
    [[nodiscard]] const Error& error() const { return *error_; }

private:
    std::optional<Error> error_;
};

} // namespace daylark
