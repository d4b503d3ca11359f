#include "treeentityresolver.h"

#include <string_view>

#include <xercesc/framework/LocalFileInputSource.hpp>

#include "chartstring.h"
#include "pathfactory.h"

using namespace xercesc;

InputSource* TreeEntityResolver::resolveEntity(const XMLCh*, const XMLCh* systemId) {
  const std::u16string_view name = systemId ? systemId : u"";
  ChartString path(PathFactory::getPathInstance(3)->getFolder().c_str());
  for (const XMLCh* file : {u"pmml-2-1.xsd", u"treeview-1.0.xsd"}) {
    if (!name.ends_with(file)) continue;
    path.append(file);
    break;
  }
  return new LocalFileInputSource(path.xc_str());
}
