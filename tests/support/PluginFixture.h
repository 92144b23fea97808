// The plug-in's pieces in a throw-away host home, for the suites that drive
// the view, its page, graph or bridge: the shipped files, a simulated SDK
// whose reset clock stands still, and at the end every singleton the view
// brings up taken down again. Header-only: its users link the plug-in core.
#pragma once

#include "CommonUtils.h"
#include "NetInfoGraphConfigParse.h"
#include "NetInfoSettingUILogic.h"
#include "NetInfoSettingUIPlugin.h"
#include "NetInfoUILogic.h"
#include "NetInfoUIService.h"
#include "Sdk.h"
#include "TestHome.h"
#include "simulated/SimulatedBackend.h"

#include <QtTest>

#include <memory>

struct PluginFixture
{
    std::unique_ptr<TestHome> home;

    // A fresh home with the shipped configuration (the switches in off
    // turned off, each (from, to) edit applied) and the named data files.
    bool setUp(const QStringList& off = {}, const QStringList& files = {},
        const QList<QPair<QByteArray, QByteArray>>& edits = {})
    {
        home = std::make_unique<TestHome>();
        bool ok = home->isValid() && home->installConfig(off, edits);
        for (const QString& file : files)
            ok = ok && home->installDataFile(file);
        return ok;
    }

    static velt::SimulatedBackend* installSdk()
    {
        auto backend = std::make_unique<velt::SimulatedBackend>([] { return qint64(1700000000); });
        velt::SimulatedBackend* raw = backend.get();
        velt::Sdk::instance().setBackend(std::move(backend));
        return raw;
    }

    // The view, initialised; it keeps two refused connections on purpose.
    static CNetInfoUIService* initView()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No such slot .*onResetButtonClicked"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("No such signal .*ResetButtonClicked"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("sender name"));
        CNetInfoUIService* view = CNetInfoUIService::instance();
        view->Init();
        return view;
    }

    void tearDown()
    {
        CommonUtils::SetMessageHook({});
        NetInfoUILogic::UnregSDK();
        CNetInfoUIService::Destroy();
        NetInfoSettingUIPlugin::ReleaseInstance();
        NetInfoSettingUILogic::Destroy();
        NetInfoGraphConfigParse::OnDestroy();
        NetInfoUILogic::Destroy();
        home.reset();
    }
};
