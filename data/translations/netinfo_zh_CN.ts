<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>设置限额</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>每周，起始日</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>连接时长</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>注意：以上数据仅供参考，可能与运营商账单有出入。</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>您的连接时长已达到本周期的限额。</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>您的连接时长已达到本周期的警告值。</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>您的流量已达到本周期的限额。</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>您的流量已达到本周期的警告值。</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>用量警告</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>重置计数</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>达到限额时警告</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>达到限额的以下百分比时警告：</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>按周期重复</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>流量限额</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>重置统计</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>全部折叠</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>确认</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>移动网络</translation>
    </message>
    <message>
        <source>IDS_DISCONNECTDIALUP</source>
        <translation>立即断开连接</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>全部展开</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>星期五</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>重复周期</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>限额</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>统计周期</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>请输入流量限额。</translation>
    </message>
    <message>
        <source>IDS_SAVE_SETTINGS_FAILED</source>
        <translation>无法保存设置。请检查磁盘是否有剩余空间、设置文件夹是否可写，然后重试。</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_WARN_PERCENTAGE</source>
        <translation>请输入警告百分比。</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>请输入时长限额。</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>星期一</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>否</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>注意：统计数据仅供参考。</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>每天</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>每月，起始日</translation>
    </message>
    <message>
        <source>IDS_RESET_ALLDATA</source>
        <translation>重置全部数据</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>确定要重置所有已保存的统计数据吗？此操作无法撤销。</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>星期六</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>用量限额</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>限额依据本机统计的数据计算，可能与运营商的统计结果不一致。</translation>
    </message>
    <message>
        <source>IDS_STA_DATARECEIVED</source>
        <translation>已接收数据：</translation>
    </message>
    <message>
        <source>IDS_STA_DATASENT</source>
        <translation>已发送数据：</translation>
    </message>
    <message>
        <source>IDS_STA_DOWNSPEED</source>
        <translation>下载速度：</translation>
    </message>
    <message>
        <source>IDS_STA_DURATION</source>
        <translation>时长：</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>开始日期：</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALDATA</source>
        <translation>数据总量：</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>数据流量</translation>
    </message>
    <message>
        <source>IDS_STA_UPSPEED</source>
        <translation>上传速度：</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>星期日</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>星期四</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>今天</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>流量：</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>下载</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>已接收：</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>本月</translation>
    </message>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>速度：</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>统计</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>上次重置：</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>时长：</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>数据传输</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>上传</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>已发送：</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>今年</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>下载速度</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>速度（%s）</translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>上传速度</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>星期二</translation>
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
        <translation>小时</translation>
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
        <translation>时长限额</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>星期三</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>是</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>simulated figures</source>
        <translation>模拟数据</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>连接</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>工具(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>设置(&amp;S)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>语言(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About NetInfo</source>
        <translation>关于 NetInfo(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Counted interfaces…</source>
        <translation>计数的接口(&amp;C)…</translation>
    </message>
    <message>
        <source>&amp;Keep counting in the background</source>
        <translation>在后台持续计数(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;History…</source>
        <translation>历史记录(&amp;H)…</translation>
    </message>
    <message>
        <source>Data limit</source>
        <translation>流量限额</translation>
    </message>
</context>
<context>
    <name>ConnectionLayer</name>
    <message>
        <source>This system&apos;s network counters cannot be read, so the figures shown are simulated.</source>
        <translation>无法读取本系统的网络计数器，因此显示的是模拟数据。</translation>
    </message>
    <message>
        <source>There is no connection to disconnect.</source>
        <translation>当前没有可断开的连接。</translation>
    </message>
    <message>
        <source>%1 is no longer connected, so nothing was disconnected for it.</source>
        <translation>%1 已不再连接，因此没有断开任何连接。</translation>
    </message>
</context>
<context>
    <name>HostApplication</name>
    <message>
        <source>The network information view has no settings.</source>
        <translation>网络信息视图没有可设置的项目。</translation>
    </message>
    <message>
        <source>Simulated figures: nothing is counted</source>
        <translation>模拟数据：不计数</translation>
    </message>
    <message>
        <source>Counting in the background (netinfo-recorder)</source>
        <translation>正在后台计数 (netinfo-recorder)</translation>
    </message>
    <message>
        <source>Counting while this window is open</source>
        <translation>此窗口打开时计数</translation>
    </message>
    <message>
        <source>The counted interfaces apply from the next start; --interface decides for this run.</source>
        <translation>计数的接口从下次启动起生效；本次运行由 --interface 决定。</translation>
    </message>
    <message>
        <source>a file is in the way</source>
        <translation>已有同名文件</translation>
    </message>
    <message>
        <source>NetInfo cannot create its data folder %1 (%2).</source>
        <translation>NetInfo 无法创建其数据文件夹 %1（%2）。</translation>
    </message>
    <message>
        <source>NetInfo is already running (process %1); only one instance can record the connection&apos;s usage.</source>
        <translation>NetInfo 已在运行（进程 %1）；只能有一个实例记录连接的用量。</translation>
    </message>
    <message>
        <source>permission denied</source>
        <translation>权限不足</translation>
    </message>
    <message>
        <source>the lock file cannot be written</source>
        <translation>无法写入锁文件</translation>
    </message>
    <message>
        <source>NetInfo cannot write in its data folder %1 (%2), so it cannot record the usage.</source>
        <translation>NetInfo 无法写入其数据文件夹 %1（%2），因此无法记录用量。</translation>
    </message>
    <message>
        <source>Start in the tray at login</source>
        <translation>登录时在托盘中启动</translation>
    </message>
    <message>
        <source>Cannot change %1: %2</source>
        <translation>无法更改 %1：%2</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>NetworkManagerControl</name>
    <message>
        <source>Cannot disconnect: NetworkManager does not manage the interface &quot;%1&quot;.</source>
        <translation>无法断开：NetworkManager 未管理接口“%1”。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is already disconnected.</source>
        <translation>“%1”已断开。</translation>
    </message>
    <message>
        <source>Disconnecting is not available: NetworkManager is not running.</source>
        <translation>无法断开连接：NetworkManager 未运行。</translation>
    </message>
    <message>
        <source>Disconnecting is not available: the system message bus cannot be reached.</source>
        <translation>无法断开连接：无法访问系统消息总线。</translation>
    </message>
    <message>
        <source>NetworkManager did not answer in time; &quot;%1&quot; may still be connected.</source>
        <translation>NetworkManager 未及时响应；“%1”可能仍处于连接状态。</translation>
    </message>
    <message>
        <source>NetworkManager could not disconnect &quot;%1&quot;: %2</source>
        <translation>NetworkManager 无法断开“%1”：%2</translation>
    </message>
    <message>
        <source>Cannot disconnect: no network interface is measured.</source>
        <translation>无法断开：当前未测量任何网络接口。</translation>
    </message>
    <message>
        <source>You are not allowed to disconnect &quot;%1&quot;. Ask your administrator for the right to control network connections.</source>
        <translation>您无权断开“%1”。请向管理员申请控制网络连接的权限。</translation>
    </message>
</context>
<context>
    <name>AboutDialog</name>
    <message>
        <source>About NetInfo</source>
        <translation>关于 NetInfo</translation>
    </message>
    <message>
        <source>Network usage of the mobile-broadband connection.</source>
        <translation>移动宽带连接的网络用量。</translation>
    </message>
    <message>
        <source>Released under the MIT licence.</source>
        <translation>以 MIT 许可证发布。</translation>
    </message>
    <message>
        <source>User data:</source>
        <translation>用户数据：</translation>
    </message>
    <message>
        <source>Settings:</source>
        <translation>设置：</translation>
    </message>
    <message>
        <source>Usage ledger:</source>
        <translation>用量记录：</translation>
    </message>
</context>
<context>
    <name>CountedInterfacesDialog</name>
    <message>
        <source>Counted interfaces</source>
        <translation>计数的接口</translation>
    </message>
    <message>
        <source>Count these interfaces. With none ticked, NetInfo counts the links NetworkManager calls metered, else the one of the default route.</source>
        <translation>对这些接口计数。若未勾选任何接口，NetInfo 将对 NetworkManager 标记为按流量计费的连接计数，否则对默认路由的接口计数。</translation>
    </message>
    <message>
        <source>%1 (not present)</source>
        <translation>%1（不存在）</translation>
    </message>
</context>
<context>
    <name>allowance</name>
    <message>
        <source>Used %1 of %2 (%3 %)</source>
        <translation>已用 %1 / %2（%3 %）</translation>
    </message>
    <message>
        <source>Remaining: %1</source>
        <translation>剩余：%1</translation>
    </message>
    <message>
        <source>Used: %1 (no data limit set)</source>
        <translation>已用：%1（未设置流量限额）</translation>
    </message>
    <message>
        <source>Includes a calibration of %1%2</source>
        <translation>含校准值 %1%2</translation>
    </message>
    <message>
        <source>Days left: %1</source>
        <translation>剩余天数：%1</translation>
    </message>
    <message>
        <source>Average per day: %1</source>
        <translation>日均用量：%1</translation>
    </message>
    <message>
        <source>Daily budget to the end: %1</source>
        <translation>至周期结束每日可用：%1</translation>
    </message>
    <message>
        <source>Forecast for the period: %1</source>
        <translation>本周期预计用量：%1</translation>
    </message>
    <message>
        <source>The forecast assumes the rest of the period goes on like the days so far: the average per day (including the part of today gone) times the period&apos;s days.</source>
        <translation>预计用量假定本周期余下的时间与已过去的天数相同：日均用量（含今天已过去的部分）乘以本周期的天数。</translation>
    </message>
</context>
<context>
    <name>AllowancePanel</name>
    <message>
        <source>Used</source>
        <translation>已用</translation>
    </message>
    <message>
        <source>Remaining</source>
        <translation>剩余</translation>
    </message>
    <message>
        <source>Days left</source>
        <translation>剩余天数</translation>
    </message>
    <message>
        <source>Average per day</source>
        <translation>日均用量</translation>
    </message>
    <message>
        <source>Daily budget</source>
        <translation>每日可用</translation>
    </message>
    <message>
        <source>Forecast</source>
        <translation>预计用量</translation>
    </message>
    <message>
        <source>What may be used per day, today included, to stay within the limit</source>
        <translation>为不超出限额，每天（含今天）可使用的流量</translation>
    </message>
    <message>
        <source>Calibrate…</source>
        <translation>校准…</translation>
    </message>
    <message>
        <source>Enter the usage your operator counts for this period</source>
        <translation>输入运营商统计的本周期用量</translation>
    </message>
    <message>
        <source>Remove calibration</source>
        <translation>取消校准</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1 (no limit set)</source>
        <translation>%1（未设置限额）</translation>
    </message>
    <message>
        <source>Calibrated to your operator&apos;s count: %1%2 on what NetInfo recorded.</source>
        <translation>已按运营商的统计校准：在 NetInfo 记录的用量上 %1%2。</translation>
    </message>
    <message>
        <source>Calibrate</source>
        <translation>校准</translation>
    </message>
    <message>
        <source>Usage your operator counts for this period so far, in GB.
NetInfo keeps its own count and adds the difference; you can remove it again.</source>
        <translation>运营商统计的本周期至今用量，单位 GB。
NetInfo 保留自己的计数并加上差值；您可以随时取消。</translation>
    </message>
    <message>
        <source>The calibration could not be stored in %1.</source>
        <translation>无法将校准保存到 %1。</translation>
    </message>
</context>
<context>
    <name>BackgroundRecording</name>
    <message>
        <source>no answer in time</source>
        <translation>未及时响应</translation>
    </message>
    <message>
        <source>NetInfo now counts in the background, also after your next login (systemd user unit %1).</source>
        <translation>NetInfo 现已在后台计数，下次登录后也会继续（systemd 用户单元 %1）。</translation>
    </message>
    <message>
        <source>Could not turn on the background recorder: systemctl --user enable --now %1 failed: %2</source>
        <translation>无法开启后台记录：systemctl --user enable --now %1 执行失败：%2</translation>
    </message>
    <message>
        <source>Could not turn on the background recorder: %1 is missing.</source>
        <translation>无法开启后台记录：缺少 %1。</translation>
    </message>
    <message>
        <source>Could not turn on the background recorder: cannot write %1: %2</source>
        <translation>无法开启后台记录：无法写入 %1：%2</translation>
    </message>
    <message>
        <source>The background recorder will start with your next login (%1), but it could not be started now.</source>
        <translation>后台记录将在您下次登录时启动（%1），但现在无法启动。</translation>
    </message>
    <message>
        <source>NetInfo now counts in the background, also after your next login (%1).</source>
        <translation>NetInfo 现已在后台计数，下次登录后也会继续（%1）。</translation>
    </message>
</context>
<context>
    <name>DesktopNotifier</name>
    <message>
        <source>Disconnect</source>
        <translation>断开连接</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
</context>
<context>
    <name>HistoryChart</name>
    <message>
        <source>%1 to %2</source>
        <translation>%1 至 %2</translation>
    </message>
    <message>
        <source>%1
Received: %2
Sent: %3
Total: %4</source>
        <translation>%1
已接收：%2
已发送：%3
总计：%4</translation>
    </message>
    <message>
        <source>limit</source>
        <translation>限额</translation>
    </message>
</context>
<context>
    <name>HistoryWindow</name>
    <message>
        <source>NetInfo — History</source>
        <translation>NetInfo — 历史记录</translation>
    </message>
    <message>
        <source>Days of this and the previous period</source>
        <translation>本周期与上一周期的每日用量</translation>
    </message>
    <message>
        <source>The last twelve months</source>
        <translation>最近十二个月</translation>
    </message>
    <message>
        <source>&lt;span style=&apos;color:%1&apos;&gt;&amp;#9632;&lt;/span&gt; received &amp;nbsp; &lt;span style=&apos;color:%2&apos;&gt;&amp;#9632;&lt;/span&gt; sent</source>
        <translation>&lt;span style=&apos;color:%1&apos;&gt;&amp;#9632;&lt;/span&gt; 接收 &amp;nbsp; &lt;span style=&apos;color:%2&apos;&gt;&amp;#9632;&lt;/span&gt; 发送</translation>
    </message>
    <message>
        <source>Export PNG…</source>
        <translation>导出 PNG…</translation>
    </message>
    <message>
        <source>Hover a bar for its figures.</source>
        <translation>将鼠标悬停在柱形上可查看其数据。</translation>
    </message>
    <message>
        <source>Export history</source>
        <translation>导出历史记录</translation>
    </message>
    <message>
        <source>PNG images (*.png)</source>
        <translation>PNG 图像 (*.png)</translation>
    </message>
    <message>
        <source>The image could not be written to %1.</source>
        <translation>无法将图像写入 %1。</translation>
    </message>
</context>
<context>
    <name>LimitNotices</name>
    <message>
        <source>Data usage is nearing the limit</source>
        <translation>流量即将达到限额</translation>
    </message>
    <message>
        <source>Data usage limit reached</source>
        <translation>流量已达到限额</translation>
    </message>
    <message>
        <source>Connection time is nearing the limit</source>
        <translation>连接时长即将达到限额</translation>
    </message>
    <message>
        <source>Connection time limit reached</source>
        <translation>连接时长已达到限额</translation>
    </message>
    <message>
        <source>%1 % of this period&apos;s limit used.</source>
        <translation>已使用本周期限额的 %1 %。</translation>
    </message>
    <message>
        <source>%1 % of this period&apos;s limit used on %2.</source>
        <translation>%2 已使用本周期限额的 %1 %。</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>History</source>
        <translation>历史记录</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>NetInfo: no usage limit set</source>
        <translation>NetInfo：未设置用量限额</translation>
    </message>
    <message>
        <source>NetInfo: %1 of %2 used (%3 %)
%4 left</source>
        <translation>NetInfo：已用 %1 / %2（%3 %）
剩余 %4</translation>
    </message>
    <message numerus="yes">
        <source>%n day(s) left in this period</source>
        <translation>
            <numerusform>本周期还剩 %n 天</numerusform>
        </translation>
    </message>
    <message>
        <source>NetInfo keeps running in the tray. Quit it from the tray icon&apos;s menu.</source>
        <translation>NetInfo 将继续在托盘中运行。如需退出，请使用托盘图标的菜单。</translation>
    </message>
</context>
</TS>
