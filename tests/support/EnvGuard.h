// Sets or clears one environment variable for a scope and puts the previous
// value back, even when a failed QCOMPARE returns early.
#pragma once

#include <QByteArray>

class EnvGuard
{
public:
    // A null value clears the variable.
    EnvGuard(const char* name, const QByteArray& value)
        : m_name(name)
        , m_saved(qgetenv(name))
    {
        set(value);
    }
    ~EnvGuard() { set(m_saved); }
    EnvGuard(const EnvGuard&) = delete;
    EnvGuard& operator=(const EnvGuard&) = delete;

    void set(const QByteArray& value) const
    {
        value.isNull() ? qunsetenv(m_name.constData()) : qputenv(m_name.constData(), value);
    }

private:
    QByteArray m_name;
    QByteArray m_saved;
};
