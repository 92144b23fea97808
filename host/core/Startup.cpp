#include "Startup.h"

#include "PluginContainer.h"

namespace {

IPluginContainer*& currentContainer()
{
    static IPluginContainer* container = Startup::DefaultPluginContainer();
    return container;
}

} // namespace

IPluginContainer* Startup::GetPluginContainer()
{
    return currentContainer();
}

void Startup::SetPluginContainer(IPluginContainer* container)
{
    currentContainer() = container;
}

IPluginContainer* Startup::DefaultPluginContainer()
{
    static PluginContainer container;
    return &container;
}
