#pragma once

#include <QString>

#include <optional>
#include <utility>

// The outcome of a routine that can fail: a value, or a Bulgarian message for the user.
template <typename T>
class [[nodiscard]] Result final
{
public:
    static Result success(T value) { return Result(std::move(value), {}); }
    static Result failure(QString message) { return Result(std::nullopt, std::move(message)); }

    bool ok() const { return m_value.has_value(); }
    explicit operator bool() const { return ok(); }
    const T &value() const { return *m_value; }
    T &value() { return *m_value; }
    const T *operator->() const { return &*m_value; }
    const QString &error() const { return m_error; }

private:
    Result(std::optional<T> value, QString error)
        : m_value(std::move(value))
        , m_error(std::move(error))
    {
    }

    std::optional<T> m_value;
    QString m_error;
};

template <>
class [[nodiscard]] Result<void> final
{
public:
    static Result success() { return Result(true, {}); }
    static Result failure(QString message) { return Result(false, std::move(message)); }

    bool ok() const { return m_ok; }
    explicit operator bool() const { return m_ok; }
    const QString &error() const { return m_error; }

private:
    Result(bool ok, QString error)
        : m_ok(ok)
        , m_error(std::move(error))
    {
    }

    bool m_ok;
    QString m_error;
};

using Outcome = Result<void>;
