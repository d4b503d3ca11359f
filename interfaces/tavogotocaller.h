// TavoGoToCaller: the exception that always reaches the caller.
#ifndef CHARTXML_TAVOGOTOCALLER_H
#define CHARTXML_TAVOGOTOCALLER_H

#include "export.h"

// Thrown by services of an embedding program to leave everything at once. No code of this library
// throws it, and every handler that absorbs exceptions lets it pass.
class CHARTXML_API TavoGoToCaller {
 public:
  virtual ~TavoGoToCaller() = default;
};

#endif
