#pragma once

#include <QtGlobal>

#if defined(ZELVAR_SERIALPORT_BUILD)
#define ZELVAR_SERIALPORT_EXPORT Q_DECL_EXPORT
#else
#define ZELVAR_SERIALPORT_EXPORT Q_DECL_IMPORT
#endif
