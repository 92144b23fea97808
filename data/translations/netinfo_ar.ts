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
        <translation>%1 (غير موجودة)</translation>
    </message>
</context>
</TS>
