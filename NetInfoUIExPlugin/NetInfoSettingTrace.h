// Entry and exit trace lines of the usage-limit store and page, which carry
// the source line rather than the plain "Entered"/"Exit" of the other classes.
#pragma once

#include "NetInfoLog.h"

class NetInfoSettingTrace
{
public:
    NetInfoSettingTrace(const char* source, const char* function, int line)
        : m_source(source)
        , m_function(function)
        , m_line(line)
    {
        NETINFO_TRACE("Start: %s: %s: %s %d", NetInfoLog::now().constData(), m_source, m_function, m_line);
    }
    ~NetInfoSettingTrace()
    {
        NETINFO_TRACE("End  : %s: %s: %s %d", NetInfoLog::now().constData(), m_source, m_function, m_line);
    }
    NetInfoSettingTrace(const NetInfoSettingTrace&) = delete;
    NetInfoSettingTrace& operator=(const NetInfoSettingTrace&) = delete;

private:
    const char* m_source;
    const char* m_function;
    int m_line;
};

#define NETINFO_SETTING_TRACE(source) NetInfoSettingTrace settingTrace_(source, __func__, __LINE__)
#define NETINFO_ARG_NULL(source)                                                                             \
    NETINFO_TRACE("Arg is NULL: %s: %s: %s %d", NetInfoLog::now().constData(), source, __func__, __LINE__)
