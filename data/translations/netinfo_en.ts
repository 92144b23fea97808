<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>Set limit</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>Weekly, starting on</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>Connection time</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>Note: these figures are approximate and may differ from your operator's bill.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>Your connection time has reached the limit for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>Your connection time has reached the warning level for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>Your data usage has reached the limit for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>Your data usage has reached the warning level for this period.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>Usage warning</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>Reset counters</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>Warn when the limit is reached</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>Warn at this percentage of the limit:</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>Repeat the period</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>Data limit</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>Reset statistics</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>Collapse all</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>Confirm</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>Mobile</translation>
    </message>
    <message>
        <source>IDS_DISCONNECTDIALUP</source>
        <translation>Disconnect now</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>Expand all</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>Friday</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>Recurrence</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>Limits</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>Usage period</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>Warnings</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>Please enter the data limit.</translation>
    </message>
    <message>
        <source>IDS_SAVE_SETTINGS_FAILED</source>
        <translation>The settings could not be saved. Check that the disk has free space and that the settings folder can be written to, then try again.</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_WARN_PERCENTAGE</source>
        <translation>Please enter the warning percentage.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>Please enter the time limit.</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>Monday</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>No</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>Note: statistics are approximate.</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>Prompt</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>Daily</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>Monthly, starting on day</translation>
    </message>
    <message>
        <source>IDS_RESET_ALLDATA</source>
        <translation>Reset all data</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>Reset all stored statistics? This cannot be undone.</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>Saturday</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>Usage limits</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>Limits are measured on this computer and may differ from your operator's count.</translation>
    </message>
    <message>
        <source>IDS_STA_DATARECEIVED</source>
        <translation>Data received:</translation>
    </message>
    <message>
        <source>IDS_STA_DATASENT</source>
        <translation>Data sent:</translation>
    </message>
    <message>
        <source>IDS_STA_DOWNSPEED</source>
        <translation>Download speed:</translation>
    </message>
    <message>
        <source>IDS_STA_DURATION</source>
        <translation>Duration:</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>Start date:</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALDATA</source>
        <translation>Total data:</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>Data volume</translation>
    </message>
    <message>
        <source>IDS_STA_UPSPEED</source>
        <translation>Upload speed:</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>Sunday</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>Thursday</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>Today</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>Data:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>Download</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Received:</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>This month</translation>
    </message>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>Speed:</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>Statistics</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>Last reset:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Duration:</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>Transfer</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>Upload</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Sent:</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>This year</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>Download speed</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>Speed (%s)</translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>Upload speed</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>Tuesday</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>B/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_BYTE</source>
        <translation>B</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>GB</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>GB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>hours</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>KB</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>KB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>MB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>TB</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>Time limit</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>Wednesday</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>Yes</translation>
    </message>
</context>
</TS>
