// Marks what the shared library exports; everything else is hidden.
#ifndef TAVRIN_EXPORT_H
#define TAVRIN_EXPORT_H

#if defined(__GNUC__)
#define TAVRIN_API __attribute__((visibility("default")))
#else
#define TAVRIN_API
#endif

#endif
