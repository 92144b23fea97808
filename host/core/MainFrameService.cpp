#include "MainFrameService.h"

MainFrameService::MainFrameService(QObject* parent)
    : QObject(parent)
{ }
