// TreeEntityResolver: the schemas of tree documents.
#ifndef CHARTXML_TREEENTITYRESOLVER_H
#define CHARTXML_TREEENTITYRESOLVER_H

#include <xercesc/sax/EntityResolver.hpp>

class TreeEntityResolver : public xercesc::EntityResolver {
 public:
  // Whatever host or folder comes before it, a name that ends in that of one of the two schemas is
  // that file in the installation's folder. Any other name is the folder itself, which can't be
  // read: a parse that asks for it fails. The parser owns the result; `publicId` has no effect.
  xercesc::InputSource* resolveEntity(const XMLCh* publicId, const XMLCh* systemId) override;
};

#endif
