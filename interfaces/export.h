// The mark of everything that the shared library exports.
#ifndef CHARTXML_EXPORT_H
#define CHARTXML_EXPORT_H

#define CHARTXML_API __attribute__((visibility("default")))

#endif
