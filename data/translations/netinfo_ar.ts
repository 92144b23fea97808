<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>تعيين الحد</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>أسبوعيًا، بدءًا من يوم</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>مدة الاتصال</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>ملاحظة: هذه الأرقام تقريبية وقد تختلف عن فاتورة مشغل الشبكة.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>بلغت مدة اتصالك الحد المسموح به لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>بلغت مدة اتصالك مستوى التحذير لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>بلغ استخدامك للبيانات الحد المسموح به لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>بلغ استخدامك للبيانات مستوى التحذير لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>تحذير الاستخدام</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>إعادة تعيين العدادات</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>التحذير عند بلوغ الحد</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>التحذير عند بلوغ هذه النسبة المئوية من الحد:</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>تكرار الفترة</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>حد البيانات</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>إعادة تعيين الإحصائيات</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>طي الكل</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>تأكيد</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>الجوال:</translation>
    </message>
    <message>
        <source>IDS_DISCONNECTDIALUP</source>
        <translation>قطع الاتصال الآن</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>توسيع الكل</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>الجمعة</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>التكرار</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>الحدود</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>فترة الاستخدام</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>التحذيرات</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>يرجى إدخال حد البيانات.</translation>
    </message>
    <message>
        <source>IDS_SAVE_SETTINGS_FAILED</source>
        <translation>تعذّر حفظ الإعدادات. تحقّق من وجود مساحة فارغة على القرص ومن إمكانية الكتابة في مجلد الإعدادات، ثم أعد المحاولة.</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_WARN_PERCENTAGE</source>
        <translation>يرجى إدخال النسبة المئوية للتحذير.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>يرجى إدخال حد الوقت.</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>الاثنين</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>لا</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>ملاحظة: الإحصائيات تقريبية.</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>تنبيه</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>يوميًا</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>شهريًا، بدءًا من اليوم</translation>
    </message>
    <message>
        <source>IDS_RESET_ALLDATA</source>
        <translation>إعادة تعيين كل البيانات</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>هل تريد إعادة تعيين كل الإحصائيات المحفوظة؟ لا يمكن التراجع عن هذا الإجراء.</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>السبت</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>حدود الاستخدام</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>تُحسب الحدود على هذا الكمبيوتر وقد تختلف عما يحسبه مشغل الشبكة.</translation>
    </message>
    <message>
        <source>IDS_STA_DATARECEIVED</source>
        <translation>البيانات المستلمة:</translation>
    </message>
    <message>
        <source>IDS_STA_DATASENT</source>
        <translation>البيانات المرسلة:</translation>
    </message>
    <message>
        <source>IDS_STA_DOWNSPEED</source>
        <translation>سرعة التنزيل:</translation>
    </message>
    <message>
        <source>IDS_STA_DURATION</source>
        <translation>المدة:</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>تاريخ البدء:</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALDATA</source>
        <translation>إجمالي البيانات:</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>حجم البيانات</translation>
    </message>
    <message>
        <source>IDS_STA_UPSPEED</source>
        <translation>سرعة التحميل:</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>الأحد</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>الخميس</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>البيانات:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>التنزيل</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>المستلمة:</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>هذا الشهر</translation>
    </message>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>السرعة:</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>الإحصائيات</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>آخر إعادة تعيين:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>المدة:</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>نقل البيانات</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>التحميل</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>المرسلة:</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>هذا العام</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>سرعة التنزيل</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>السرعة (%s)</translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>سرعة التحميل</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>الثلاثاء</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>بايت/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_BYTE</source>
        <translation>بايت</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>غيغابايت</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>غيغابايت/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>ساعة</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>كيلوبايت</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>كيلوبايت/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>ميغابايت</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>ميغابايت/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>تيرابايت</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>حد الوقت</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>الأربعاء</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>نعم</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <comment>Translate this string to the string 'LTR' in left-to-right languages or to 'RTL' in right-to-left languages (such as Hebrew and Arabic) to get proper widget layout.</comment>
        <translation>RTL</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>simulated figures</source>
        <translation>أرقام محاكاة</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>الاتصال</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;أدوات</translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>&amp;الإعدادات...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;خروج</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>&amp;اللغة</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;مساعدة</translation>
    </message>
    <message>
        <source>&amp;About NetInfo</source>
        <translation>&amp;حول NetInfo</translation>
    </message>
    <message>
        <source>&amp;Counted interfaces…</source>
        <translation>&amp;الواجهات المحسوبة…</translation>
    </message>
    <message>
        <source>&amp;Keep counting in the background</source>
        <translation>&amp;متابعة الحساب في الخلفية</translation>
    </message>
    <message>
        <source>&amp;History…</source>
        <translation>&amp;السجل…</translation>
    </message>
    <message>
        <source>Data limit</source>
        <translation>حد البيانات</translation>
    </message>
</context>
<context>
    <name>ConnectionLayer</name>
    <message>
        <source>This system&apos;s network counters cannot be read, so the figures shown are simulated.</source>
        <translation>تتعذر قراءة عدادات الشبكة في هذا النظام، لذا فإن الأرقام المعروضة محاكاة.</translation>
    </message>
    <message>
        <source>There is no connection to disconnect.</source>
        <translation>لا يوجد اتصال لقطعه.</translation>
    </message>
    <message>
        <source>%1 is no longer connected, so nothing was disconnected for it.</source>
        <translation>لم تعد %1 متصلة، لذا لم يُقطع أي اتصال.</translation>
    </message>
</context>
<context>
    <name>HostApplication</name>
    <message>
        <source>The network information view has no settings.</source>
        <translation>لا توجد إعدادات لعرض معلومات الشبكة.</translation>
    </message>
    <message>
        <source>Simulated figures: nothing is counted</source>
        <translation>أرقام محاكاة: لا يُحسب شيء</translation>
    </message>
    <message>
        <source>Counting in the background (netinfo-recorder)</source>
        <translation>الحساب يجري في الخلفية (netinfo-recorder)</translation>
    </message>
    <message>
        <source>Counting while this window is open</source>
        <translation>الحساب يجري ما دامت هذه النافذة مفتوحة</translation>
    </message>
    <message>
        <source>The counted interfaces apply from the next start; --interface decides for this run.</source>
        <translation>تسري الواجهات المحسوبة من التشغيل التالي؛ ويحددها --interface في هذا التشغيل.</translation>
    </message>
    <message>
        <source>a file is in the way</source>
        <translation>يوجد ملف بالاسم نفسه</translation>
    </message>
    <message>
        <source>NetInfo cannot create its data folder %1 (%2).</source>
        <translation>يتعذر على NetInfo إنشاء مجلد بياناته ⁦%1⁩ (%2).</translation>
    </message>
    <message>
        <source>NetInfo is already running (process %1); only one instance can record the connection&apos;s usage.</source>
        <translation>‏NetInfo قيد التشغيل بالفعل (العملية %1)؛ ولا يمكن إلا لنسخة واحدة تسجيل استخدام الاتصال.</translation>
    </message>
    <message>
        <source>permission denied</source>
        <translation>تم رفض الإذن</translation>
    </message>
    <message>
        <source>the lock file cannot be written</source>
        <translation>تتعذر الكتابة في ملف القفل</translation>
    </message>
    <message>
        <source>NetInfo cannot write in its data folder %1 (%2), so it cannot record the usage.</source>
        <translation>يتعذر على NetInfo الكتابة في مجلد بياناته ⁦%1⁩ (%2)، لذا لا يمكنه تسجيل الاستخدام.</translation>
    </message>
    <message>
        <source>Start in the tray at login</source>
        <translation>البدء في علبة النظام عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>Cannot change %1: %2</source>
        <translation>تعذّر تغيير ⁦%1⁩: %2</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
</context>
<context>
    <name>NetworkManagerControl</name>
    <message>
        <source>Cannot disconnect: NetworkManager does not manage the interface &quot;%1&quot;.</source>
        <translation>تعذر قطع الاتصال: لا يدير NetworkManager الواجهة «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is already disconnected.</source>
        <translation>الواجهة «%1» غير متصلة بالفعل.</translation>
    </message>
    <message>
        <source>Disconnecting is not available: NetworkManager is not running.</source>
        <translation>قطع الاتصال غير متاح: NetworkManager لا يعمل.</translation>
    </message>
    <message>
        <source>Disconnecting is not available: the system message bus cannot be reached.</source>
        <translation>قطع الاتصال غير متاح: يتعذر الوصول إلى ناقل رسائل النظام.</translation>
    </message>
    <message>
        <source>NetworkManager did not answer in time; &quot;%1&quot; may still be connected.</source>
        <translation>لم يستجب NetworkManager في الوقت المحدد؛ قد تظل «%1» متصلة.</translation>
    </message>
    <message>
        <source>NetworkManager could not disconnect &quot;%1&quot;: %2</source>
        <translation>تعذر على NetworkManager قطع اتصال «%1»: %2</translation>
    </message>
    <message>
        <source>Cannot disconnect: no network interface is measured.</source>
        <translation>تعذر قطع الاتصال: لا توجد واجهة شبكة قيد القياس.</translation>
    </message>
    <message>
        <source>You are not allowed to disconnect &quot;%1&quot;. Ask your administrator for the right to control network connections.</source>
        <translation>لا يُسمح لك بقطع اتصال «%1». اطلب من المسؤول صلاحية التحكم في اتصالات الشبكة.</translation>
    </message>
</context>
<context>
    <name>AboutDialog</name>
    <message>
        <source>About NetInfo</source>
        <translation>حول NetInfo</translation>
    </message>
    <message>
        <source>Network usage of the mobile-broadband connection.</source>
        <translation>استخدام الشبكة لاتصال النطاق العريض المتنقل.</translation>
    </message>
    <message>
        <source>Released under the MIT licence.</source>
        <translation>صادر بموجب رخصة MIT.</translation>
    </message>
    <message>
        <source>User data:</source>
        <translation>بيانات المستخدم:</translation>
    </message>
    <message>
        <source>Settings:</source>
        <translation>الإعدادات:</translation>
    </message>
    <message>
        <source>Usage ledger:</source>
        <translation>سجل الاستخدام:</translation>
    </message>
</context>
<context>
    <name>CountedInterfacesDialog</name>
    <message>
        <source>Counted interfaces</source>
        <translation>الواجهات المحسوبة</translation>
    </message>
    <message>
        <source>Count these interfaces. With none ticked, NetInfo counts the links NetworkManager calls metered, else the one of the default route.</source>
        <translation>احسب هذه الواجهات. إن لم تُحدَّد أي واجهة، يحسب NetInfo الروابط التي يعدّها NetworkManager محدودة الاستخدام، وإلا فواجهة المسار الافتراضي.</translation>
    </message>
    <message>
        <source>%1 (not present)</source>
        <translation>‏⁦%1⁩ (غير موجودة)</translation>
    </message>
</context>
<context>
    <name>allowance</name>
    <message>
        <source>Used %1 of %2 (%3 %)</source>
        <translation>استُخدم ⁦%1⁩ من ⁦%2⁩ (⁦%3 %⁩)</translation>
    </message>
    <message>
        <source>Remaining: %1</source>
        <translation>المتبقي: %1</translation>
    </message>
    <message>
        <source>Used: %1 (no data limit set)</source>
        <translation>المستخدم: %1 (لم يُعيَّن حد للبيانات)</translation>
    </message>
    <message>
        <source>Includes a calibration of %1%2</source>
        <translation>يشمل معايرة بمقدار ⁦%1%2⁩</translation>
    </message>
    <message>
        <source>Days left: %1</source>
        <translation>الأيام المتبقية: %1</translation>
    </message>
    <message>
        <source>Average per day: %1</source>
        <translation>المتوسط اليومي: %1</translation>
    </message>
    <message>
        <source>Daily budget to the end: %1</source>
        <translation>الحصة اليومية حتى نهاية الفترة: %1</translation>
    </message>
    <message>
        <source>Forecast for the period: %1</source>
        <translation>المتوقع للفترة: %1</translation>
    </message>
    <message>
        <source>The forecast assumes the rest of the period goes on like the days so far: the average per day (including the part of today gone) times the period&apos;s days.</source>
        <translation>يفترض التوقع أن بقية الفترة ستمضي كالأيام الماضية: المتوسط اليومي (بما في ذلك ما مضى من اليوم) مضروبًا في عدد أيام الفترة.</translation>
    </message>
</context>
<context>
    <name>AllowancePanel</name>
    <message>
        <source>Used</source>
        <translation>المستخدم</translation>
    </message>
    <message>
        <source>Remaining</source>
        <translation>المتبقي</translation>
    </message>
    <message>
        <source>Days left</source>
        <translation>الأيام المتبقية</translation>
    </message>
    <message>
        <source>Average per day</source>
        <translation>المتوسط اليومي</translation>
    </message>
    <message>
        <source>Daily budget</source>
        <translation>الحصة اليومية</translation>
    </message>
    <message>
        <source>Forecast</source>
        <translation>المتوقع</translation>
    </message>
    <message>
        <source>What may be used per day, today included, to stay within the limit</source>
        <translation>ما يمكن استخدامه يوميًا، بما في ذلك اليوم، للبقاء ضمن الحد</translation>
    </message>
    <message>
        <source>Calibrate…</source>
        <translation>معايرة…</translation>
    </message>
    <message>
        <source>Enter the usage your operator counts for this period</source>
        <translation>أدخل الاستخدام الذي يحسبه مشغل الشبكة لهذه الفترة</translation>
    </message>
    <message>
        <source>Remove calibration</source>
        <translation>إزالة المعايرة</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>⁦%1⁩ من ⁦%2⁩</translation>
    </message>
    <message>
        <source>%1 (no limit set)</source>
        <translation>⁦%1⁩ (لم يُعيَّن حد)</translation>
    </message>
    <message>
        <source>Calibrated to your operator&apos;s count: %1%2 on what NetInfo recorded.</source>
        <translation>مُعايَر وفق حساب مشغل الشبكة: ⁦%1%2⁩ على ما سجّله NetInfo.</translation>
    </message>
    <message>
        <source>Calibrate</source>
        <translation>معايرة</translation>
    </message>
    <message>
        <source>Usage your operator counts for this period so far, in GB.
NetInfo keeps its own count and adds the difference; you can remove it again.</source>
        <translation>الاستخدام الذي يحسبه مشغل الشبكة لهذه الفترة حتى الآن، بوحدة GB.
يحتفظ NetInfo بعدّه الخاص ويضيف الفرق، ويمكنك إزالته لاحقًا.</translation>
    </message>
    <message>
        <source>The calibration could not be stored in %1.</source>
        <translation>تعذّر حفظ المعايرة في ⁦%1⁩.</translation>
    </message>
</context>
<context>
    <name>BackgroundRecording</name>
    <message>
        <source>no answer in time</source>
        <translation>لم تصل استجابة في الوقت المحدد</translation>
    </message>
    <message>
        <source>NetInfo now counts in the background, also after your next login (systemd user unit %1).</source>
        <translation>يحسب NetInfo الآن في الخلفية، وسيواصل ذلك بعد تسجيل دخولك التالي أيضًا (وحدة systemd للمستخدم: ⁦%1⁩).</translation>
    </message>
    <message>
        <source>Could not turn on the background recorder: systemctl --user enable --now %1 failed: %2</source>
        <translation>تعذّر تشغيل التسجيل في الخلفية: فشل الأمر ⁦systemctl --user enable --now %1⁩: %2</translation>
    </message>
    <message>
        <source>Could not turn on the background recorder: %1 is missing.</source>
        <translation>تعذّر تشغيل التسجيل في الخلفية: ⁦%1⁩ غير موجود.</translation>
    </message>
    <message>
        <source>Could not turn on the background recorder: cannot write %1: %2</source>
        <translation>تعذّر تشغيل التسجيل في الخلفية: تتعذر الكتابة في ⁦%1⁩: %2</translation>
    </message>
    <message>
        <source>The background recorder will start with your next login (%1), but it could not be started now.</source>
        <translation>سيبدأ التسجيل في الخلفية مع تسجيل دخولك التالي (⁦%1⁩)، لكن تعذّر بدؤه الآن.</translation>
    </message>
    <message>
        <source>NetInfo now counts in the background, also after your next login (%1).</source>
        <translation>يحسب NetInfo الآن في الخلفية، وسيواصل ذلك بعد تسجيل دخولك التالي أيضًا (⁦%1⁩).</translation>
    </message>
</context>
<context>
    <name>DesktopNotifier</name>
    <message>
        <source>Disconnect</source>
        <translation>قطع الاتصال</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>فتح</translation>
    </message>
</context>
<context>
    <name>HistoryChart</name>
    <message>
        <source>%1 to %2</source>
        <translation>من ⁦%1⁩ إلى ⁦%2⁩</translation>
    </message>
    <message>
        <source>%1
Received: %2
Sent: %3
Total: %4</source>
        <translation>%1
المستلمة: ⁦%2⁩
المرسلة: ⁦%3⁩
الإجمالي: ⁦%4⁩</translation>
    </message>
    <message>
        <source>limit</source>
        <translation>الحد</translation>
    </message>
</context>
<context>
    <name>HistoryWindow</name>
    <message>
        <source>NetInfo — History</source>
        <translation>‏NetInfo — السجل</translation>
    </message>
    <message>
        <source>Days of this and the previous period</source>
        <translation>أيام هذه الفترة والفترة السابقة</translation>
    </message>
    <message>
        <source>The last twelve months</source>
        <translation>آخر اثني عشر شهرًا</translation>
    </message>
    <message>
        <source>&lt;span style=&apos;color:%1&apos;&gt;&amp;#9632;&lt;/span&gt; received &amp;nbsp; &lt;span style=&apos;color:%2&apos;&gt;&amp;#9632;&lt;/span&gt; sent</source>
        <translation>&lt;span style=&apos;color:%1&apos;&gt;&amp;#9632;&lt;/span&gt; المستلمة &amp;nbsp; &lt;span style=&apos;color:%2&apos;&gt;&amp;#9632;&lt;/span&gt; المرسلة</translation>
    </message>
    <message>
        <source>Export PNG…</source>
        <translation>تصدير PNG…</translation>
    </message>
    <message>
        <source>Hover a bar for its figures.</source>
        <translation>مرّر المؤشر فوق عمود لعرض أرقامه.</translation>
    </message>
    <message>
        <source>Export history</source>
        <translation>تصدير السجل</translation>
    </message>
    <message>
        <source>PNG images (*.png)</source>
        <translation>صور PNG (*.png)</translation>
    </message>
    <message>
        <source>The image could not be written to %1.</source>
        <translation>تعذّرت كتابة الصورة في ⁦%1⁩.</translation>
    </message>
</context>
<context>
    <name>LimitNotices</name>
    <message>
        <source>Data usage is nearing the limit</source>
        <translation>يقترب استخدام البيانات من الحد</translation>
    </message>
    <message>
        <source>Data usage limit reached</source>
        <translation>بلغ استخدام البيانات الحد</translation>
    </message>
    <message>
        <source>Connection time is nearing the limit</source>
        <translation>تقترب مدة الاتصال من الحد</translation>
    </message>
    <message>
        <source>Connection time limit reached</source>
        <translation>بلغت مدة الاتصال الحد</translation>
    </message>
    <message>
        <source>%1 % of this period&apos;s limit used.</source>
        <translation>استُخدم ⁦%1 %⁩ من حد هذه الفترة.</translation>
    </message>
    <message>
        <source>%1 % of this period&apos;s limit used on %2.</source>
        <translation>استُخدم ⁦%1 %⁩ من حد هذه الفترة على ⁦%2⁩.</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <source>Open</source>
        <translation>فتح</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>History</source>
        <translation>السجل</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>خروج</translation>
    </message>
    <message>
        <source>NetInfo: no usage limit set</source>
        <translation>‏NetInfo: لم يُعيَّن حد للاستخدام</translation>
    </message>
    <message>
        <source>NetInfo: %1 of %2 used (%3 %)
%4 left</source>
        <translation>‏NetInfo: استُخدم ⁦%1⁩ من ⁦%2⁩ (⁦%3 %⁩)
المتبقي: ⁦%4⁩</translation>
    </message>
    <message numerus="yes">
        <source>%n day(s) left in this period</source>
        <translation>
            <numerusform>لم يتبقَّ أي يوم في هذه الفترة</numerusform>
            <numerusform>تبقّى يوم واحد في هذه الفترة</numerusform>
            <numerusform>تبقّى يومان في هذه الفترة</numerusform>
            <numerusform>تبقّت %n أيام في هذه الفترة</numerusform>
            <numerusform>تبقّى %n يومًا في هذه الفترة</numerusform>
            <numerusform>تبقّى %n يوم في هذه الفترة</numerusform>
        </translation>
    </message>
    <message>
        <source>NetInfo keeps running in the tray. Quit it from the tray icon&apos;s menu.</source>
        <translation>يواصل NetInfo العمل في علبة النظام. للخروج منه استخدم قائمة أيقونته في علبة النظام.</translation>
    </message>
</context>
</TS>
