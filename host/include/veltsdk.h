/* The host's statistics and device SDK: a plain C interface, so that any host
 * (or a test) can supply its own implementation. Every function returns 0 on
 * success and non-zero on failure. */
#ifndef VELTSDK_H
#define VELTSDK_H

#if defined(VELTSDK_LIBRARY)
#define VELTSDK_EXPORT __attribute__((visibility("default")))
#else
#define VELTSDK_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A statistics report is a fixed 576-byte record; integers are in native byte
 * order at these offsets, other bytes are reserved. */
enum {
    VELT_STATISTICS_REPORT_SIZE = 576,
    VELT_REPORT_OFFSET_BYTES_RECEIVED = 524, /* unsigned 64-bit */
    VELT_REPORT_OFFSET_BYTES_SENT = 532, /* unsigned 64-bit */
    VELT_REPORT_OFFSET_RECEIVE_SPEED = 540, /* unsigned 32-bit, bytes per second */
    VELT_REPORT_OFFSET_SEND_SPEED = 544, /* unsigned 32-bit, bytes per second */
    VELT_REPORT_OFFSET_DURATION = 556, /* signed 64-bit, seconds */
    VELT_REPORT_OFFSET_RESET_TIME = 572 /* unsigned 32-bit, seconds since the epoch */
};

/* Report kinds of VELT_Statistics_GetReport. */
enum {
    VELT_REPORT_LIVE = 0, /* the current connection */
    VELT_REPORT_TODAY = 1, /* since local midnight */
    VELT_REPORT_LAST_RESET = 2, /* carries the time of the last reset */
    VELT_REPORT_WEEK = 3, /* since the start of the usage week */
    VELT_REPORT_MONTH = 4, /* since the start of the usage month */
    VELT_REPORT_YEAR = 5 /* since 1 January */
};

/* The statistics-changed event. Its data is one byte: 1 while connected,
 * else 0. Callbacks may be called on any thread; once UnRegister returns, the
 * callback is not running and will not be called again. */
enum { VELT_EVENT_STATISTICS_CHANGED = 8000 };

/* Size of the buffer that VELT_DevSrv_GetCustomizeName fills. */
enum { VELT_CUSTOMIZE_NAME_SIZE = 128 };

typedef int (*VELT_StatisticsCallback)(int event, void* data);

/* reserved is ignored; pass 0. */
VELTSDK_EXPORT int VELT_Statistics_GetReport(int kind, void* report, int reserved);
/* The usage of the last `key` seconds. */
VELTSDK_EXPORT int VELT_Statistics_GetSpecHistroryData(void* report, unsigned long long key);
/* Clears the stored usage and records the reset time; flag is ignored (0). */
VELTSDK_EXPORT int VELT_Statistics_Reset(int flag);
VELTSDK_EXPORT int VELT_Statistics_RegisterStatisticsCallbackEvent(int (*callback)(int event, void* data));
VELTSDK_EXPORT int VELT_Statistics_UnRegisterStatisticsCallbackEvent(int (*callback)(int event, void* data));
/* Fills buffer (VELT_CUSTOMIZE_NAME_SIZE bytes) with the NUL-terminated name
 * of the host's edition. */
VELTSDK_EXPORT int VELT_DevSrv_GetCustomizeName(char* buffer);

#ifdef __cplusplus
}
#endif

#endif /* VELTSDK_H */
