#include <gtest/gtest.h>

#include "pathfactory.h"
#include "testplaces.h"

// The tests hold the library's objects themselves, so it can't find the installation by its place.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  PathFactory::getPathInstance(3)->setInstallationFolder(CHARTXML_INSTALLATION);
  return RUN_ALL_TESTS();
}
