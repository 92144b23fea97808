// Entry to the host's plug-in container.
#pragma once

#include "hostcore_export.h"

class IPluginContainer;

class HOSTCORE_EXPORT Startup
{
public:
    // The container of the running host, or null when there is none.
    static IPluginContainer* GetPluginContainer();

    // Replaces the container (null: no host). Hosts that bring their own
    // container, and tests of the no-host paths, use this.
    static void SetPluginContainer(IPluginContainer* container);
    // The host core's own container, which GetPluginContainer() starts with.
    static IPluginContainer* DefaultPluginContainer();
};
