// Tavrin: colour transforms for image applications. This is the one header that a caller includes.
#ifndef TAVRIN_TAVRIN_H
#define TAVRIN_TAVRIN_H

#include <tavrin/dynamicProperty.h>
#include <tavrin/export.h>
#include <tavrin/files.h>
#include <tavrin/gpuAdaptor.h>
#include <tavrin/handle.h>
#include <tavrin/logger.h>
#include <tavrin/preferences.h>
#include <tavrin/status.h>
#include <tavrin/template.h>
#include <tavrin/transform.h>
#include <tavrin/transformFactory.h>
#include <tavrin/transformPathMonitor.h>
#include <tavrin/version.h>
#include <tavrin/vocabulary.h>

#endif
