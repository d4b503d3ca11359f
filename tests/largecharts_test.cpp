// What is remembered so that large charts stay fast agrees with looking at everything.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <list>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "chartbase.h"
#include "charttransformer.h"
#include "dialect.h"
#include "memoryroom.h"
#include "parsermemory.h"
#include "plxelements.h"
#include "plxframes.h"
#include "plxgraph.h"
#include "plxguides.h"
#include "testsupport.h"
#include "textbuffer.h"
#include "zlib1211tavo.h"
#include "zlibstreams.h"

using namespace xercesc;

namespace {

class LargeChart : public testing::Test {
 protected:
  std::size_t below(std::size_t bound) { return random_() % bound; }

  ChartBase base_;
  PlXVisualization root_{base_.parseDocument(chartText("<graph id=\"g\"/>"))->getDocumentElement()};
  PlXGraph& graph_ = *root_.getGraphs()[0];
  std::mt19937 random_{1};
};

TEST_F(LargeChart, PutsChildrenInOrderOfRankAndAge) {
  std::vector<CTElementType*> elements;
  for (int step = 0; step < 1000; ++step) {
    const std::u16string id = u"i" + std::u16string(step, u'+');  // sorts by age
    switch (below(7)) {
      case 0:
        elements.push_back(graph_.addPoint(id.c_str()));
        break;
      case 1:
        elements.push_back(graph_.addLine(id.c_str()));
        break;
      case 2:
        elements.push_back(graph_.addArea(id.c_str()));
        break;
      case 3:
        graph_.addLocation(PlXLocation::part_left)->setId(id.c_str());
        break;
      case 4:
        graph_.addCoordinates(id.c_str());
        break;
      case 5:
        graph_.addLineGuide()->setId(id.c_str());
        break;
      case 6:
        if (elements.empty()) break;
        std::swap(elements[below(elements.size())], elements.back());
        graph_.removeElement(*elements.back());
        elements.pop_back();
    }
    if (step == 500) graph_.removeLocations();
  }
  const dialect::Element* row = dialect::find(graph_.getImplementation());
  std::pair<unsigned, std::u16string> last;
  for (const DOMElement* child = graph_.getImplementation()->getFirstElementChild(); child;
       child = child->getNextElementSibling()) {
    std::pair<unsigned, std::u16string> next(row->rankOf(dialect::localName(child)),
                                             child->getAttribute(u"id"));
    EXPECT_LT(last, next);
    last = next;
  }
}

TEST_F(LargeChart, MakesTheFirstFreeIds) {
  std::map<std::string, PlXPoint*> holders;
  for (int step = 0; step < 1000; ++step) {
    if (step % 300 == 299) {
      base_.removeAllChildren(graph_.getImplementation());
      holders.clear();
    } else if (below(3) == 0 && !holders.empty()) {
      const auto holder = std::next(holders.begin(), below(holders.size()));
      below(2) ? holder->second->setId(nullptr) : graph_.removeElement(*holder->second);
      holders.erase(holder);
    }
    // "p1" and its numbers are also numbers of "p".
    const std::string prefix = below(4) ? "p" : "p1";
    int number = 1;
    while (holders.count(prefix + std::to_string(number))) ++number;
    const ChartString id = ChartBase::CreateUniqueId(prefix.c_str(), root_);
    ASSERT_EQ(id.toUTF8(), prefix + std::to_string(number));
    holders[id.toUTF8()] = graph_.addPoint(id.xc_str());
  }
}

TEST(TextBuffers, HoldWhatWasAppended) {
  std::mt19937 random(1);
  for (int run = 0; run < 20; ++run) {
    TextBuffer buffer;
    std::string text;
    std::list<std::string> lent;
    EXPECT_TRUE(buffer.empty());
    for (int step = 0; step < 200; ++step) {
      const std::string piece(random() % (random() % 4 ? 50 : 100000), 'a' + step % 26);
      if (step % 3 == 0) {
        lent.push_back(piece);
        buffer.borrow(lent.back());
      } else if (step % 2) {
        buffer.append(piece);
      } else {
        std::copy(piece.begin(), piece.end(), buffer.room(piece.size() + 10));
        buffer.commit(piece.size());
      }
      text += piece;
      EXPECT_EQ(buffer.empty(), text.empty());
      EXPECT_EQ(buffer.size(), text.size());
    }
    std::string copy(text.size(), ' ');
    buffer.copyTo(copy.data());
    EXPECT_TRUE(copy == text);
    EXPECT_TRUE(buffer.take() == text);
    EXPECT_TRUE(buffer.empty());
  }
}

// What is more than is compressed at once is compressed piece by piece.
TEST(LargeData, ComesBack) {
  std::string rows;
  const std::string row = "<row>" + std::string(1 << 20, '1') + "</row>";
  while (rows.size() <= mostAtOnce) rows += row;
  const std::string text =
      chartText("<embeddedSource id=\"s\"><names>x</names>" + rows + "</embeddedSource>");
  ChartTransformer chart(text);
  EXPECT_TRUE(chart.getEntireXML(nullptr) == text);
  std::string data;
  EXPECT_TRUE(zlib1211tavo::decompressString(data, chart.getCompressedData()));
  EXPECT_TRUE(data == chart.getDataXML());
  EXPECT_NE(data.find(rows), data.npos);
}

TEST(Memory, IsBoundByWhatThereIs) {
  const ChartBase library;
  ParserMemory memory;
  void* block = memory.allocate(1000);
  memory.boundRoom(1000);
  memory.deallocate(memory.allocate(1000));
  EXPECT_THROW(memory.allocate(1001), xercesc::OutOfMemoryException);
  memory.deallocate(block);
  memory.deallocate(memory.allocate(2000));
  memory.unbind();
  memory.deallocate(memory.allocate(2001));

  const std::size_t left = memoryroom::left();
  EXPECT_GT(left, std::size_t(1) << 20);
  EXPECT_LT(left, std::size_t(1) << 50);
#ifndef __SANITIZE_ADDRESS__  // it takes more than any limit
  for (const auto resource : {RLIMIT_AS, RLIMIT_DATA}) {
    rlimit before;
    ASSERT_EQ(getrlimit(resource, &before), 0);
    const rlimit bound{std::size_t(2) << 30, before.rlim_max};
    ASSERT_EQ(setrlimit(resource, &bound), 0);
    const std::size_t leftOfBound = memoryroom::left();
    setrlimit(resource, &before);
    EXPECT_GT(leftOfBound, std::min(left, bound.rlim_cur) / 4);
    EXPECT_LT(leftOfBound, bound.rlim_cur);
  }
#endif
}

}  // namespace
