// One const description shared by two threads: written, compared, read against, described by a schema and
// run with a state per thread, all at once, with the same results as on one thread. CI also runs this file
// alone under ThreadSanitizer.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "manipulation/support/RkManipulationTestTasks.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlWriter.h"

namespace {

// A pick-and-place: three sequences of several frames with one to three offsets each, named values and
// active indices, the approach run twice.
RkManipulationSequenceManager pickAndPlaceTask(RkReal lastHeight = 0.32) {
  RkManipulationSequence approach;
  for (int i = 0; i < 4; ++i) {
    RkStandardManipulationFrame frame =
        standardFrame("approach " + std::to_string(i),
                      {placementAt(0.3 + 0.02 * i, 0.1, 0.4), placementAt(0.3, -0.1, 0.4 - 0.01 * i)},
                      lasting(0.003 + 0.001 * i));
    frame.setActiveEndEffectorSet(static_cast<RkU32>(i % 2));
    RkDataMap values;
    values.setValue("height", 0.1 * i);
    values.setValue("grip width", 0.02);
    frame.setDataMap(values);
    approach.add(frame);
  }
  RkManipulationSequence grasp;
  grasp.add(standardFrame("close", {placementAt(0.38, 0, 0.3)}, lasting(0.002)));
  RkManipulationSequence retreat;
  for (int i = 0; i < 3; ++i) {
    retreat.add(standardFrame("retreat " + std::to_string(i),
                              {placementAt(0.4, 0, 0.3 + 0.05 * i), placementAt(0.4, 0.1, 0.3),
                               placementAt(0.4, -0.1, i == 2 ? lastHeight : 0.3 + 0.01 * i)},
                              lasting(0.004)));
  }
  RkManipulationSequenceManager manager;
  manager.add("approach", approach);
  manager.add("grasp", grasp);
  manager.add("retreat", retreat);
  manager.setSequenceOrder(orderOf({"approach", "grasp", "retreat", "approach"}));
  return manager;
}

// Runs body on two threads released together, handing each its index.
template <class Body>
void onTwoThreadsAtOnce(Body body) {
  std::atomic<int> waiting{2};
  auto start = [&](int index) {
    waiting.fetch_sub(1);
    while (waiting.load() > 0) std::this_thread::yield();
    body(index);
  };
  std::thread first(start, 0), second(start, 1);
  first.join();
  second.join();
}

struct Cycle {
  RkManipulationStatus::Enum status;
  RkManipulatorEndEffectorPlacement placement;
  std::string statusLine;
  bool operator==(const Cycle& other) const {
    return status == other.status && placement == other.placement && statusLine == other.statusLine;
  }
};

// Runs the manager from a fresh state to its end, then writes that state.
std::vector<Cycle> runToEnd(const RkManipulationSequenceManager& manager, std::string& finalState) {
  RkManipulationSequenceManagerState state;
  std::vector<Cycle> cycles;
  if (!manager.init(state)) return cycles;
  RkManipulationUpdateParams params;
  for (int cycle = 0; cycle < 1000; ++cycle) {
    const RkManipulationStatus::Enum status = manager.update(0.001 * cycle, params, state);
    cycles.push_back({status, manager.endEffectorPlacement(state), manager.statusString(state, "  ")});
    if (status == RkManipulationStatus::Complete || status == RkManipulationStatus::Failure) break;
  }
  RkXmlWriter::writeString(state, finalState);
  return cycles;
}

constexpr int kRounds = 40;

}  // namespace

TEST(RkManipulationConcurrency, two_threads_writing_one_const_manager_write_what_one_thread_writes) {
  // The two threads touch the shared manager first; the reference comes afterwards, from a twin.
  const RkManipulationSequenceManager shared = pickAndPlaceTask();
  std::vector<std::string> written[2];
  std::vector<std::string> schemas[2];
  onTwoThreadsAtOnce([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      std::string text;
      RkXmlWriter::writeString(shared, text);
      written[thread].push_back(text);
      if (round % 8 == thread) schemas[thread].push_back(RkXmlSchema::writeString(shared));
    }
  });

  const RkManipulationSequenceManager twin = pickAndPlaceTask();
  std::string expected;
  ASSERT_TRUE(RkXmlWriter::writeString(twin, expected));
  const std::string expectedSchema = RkXmlSchema::writeString(twin);
  ASSERT_FALSE(expectedSchema.empty());
  for (int thread = 0; thread < 2; ++thread) {
    ASSERT_EQ(written[thread].size(), static_cast<std::size_t>(kRounds));
    for (int round = 0; round < kRounds; ++round) {
      EXPECT_EQ(written[thread][round], expected) << "thread " << thread << ", round " << round;
    }
    ASSERT_FALSE(schemas[thread].empty());
    for (const std::string& schema : schemas[thread]) EXPECT_EQ(schema, expectedSchema);
  }
}

TEST(RkManipulationConcurrency,
     one_const_manager_is_read_against_and_compared_while_another_thread_writes_it) {
  const RkManipulationSequenceManager twin = pickAndPlaceTask();
  std::string expected;
  ASSERT_TRUE(RkXmlWriter::writeString(twin, expected));

  // Fresh, so that its first write and first comparison happen at once.
  const RkManipulationSequenceManager shared = pickAndPlaceTask();
  // Differs from it only in the last offset of the last frame of the last sequence.
  const RkManipulationSequenceManager different = pickAndPlaceTask(0.33);
  std::vector<std::string> written;
  int equalToTwin = 0, differentSeen = 0, readBackEqual[2] = {0, 0};
  onTwoThreadsAtOnce([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      if (thread == 0) {
        std::string text;
        RkXmlWriter::writeString(shared, text);
        written.push_back(text);
      } else {
        if (shared == twin && twin == shared) ++equalToTwin;
        if (!(shared == different)) ++differentSeen;
      }
      RkManipulationSequenceManager read;
      if (RkXmlReader::readString(expected, read) && read == shared) ++readBackEqual[thread];
    }
  });

  EXPECT_EQ(equalToTwin, kRounds);
  EXPECT_EQ(differentSeen, kRounds);
  EXPECT_EQ(readBackEqual[0], kRounds);
  EXPECT_EQ(readBackEqual[1], kRounds);
  ASSERT_EQ(written.size(), static_cast<std::size_t>(kRounds));
  for (int round = 0; round < kRounds; ++round) EXPECT_EQ(written[round], expected) << "round " << round;
}

TEST(RkManipulationConcurrency, two_threads_run_one_const_manager_each_with_its_own_state) {
  const RkManipulationSequenceManager twin = pickAndPlaceTask();
  std::string expectedFinal;
  const std::vector<Cycle> expected = runToEnd(twin, expectedFinal);
  ASSERT_GT(expected.size(), 20u);
  ASSERT_EQ(expected.back().status, RkManipulationStatus::Complete);

  const RkManipulationSequenceManager shared = pickAndPlaceTask();
  std::vector<Cycle> cycles[2];
  std::string finals[2];
  std::string written[2];
  onTwoThreadsAtOnce([&](int thread) {
    // Writing the description too, while the other thread runs it.
    RkXmlWriter::writeString(shared, written[thread]);
    cycles[thread] = runToEnd(shared, finals[thread]);
  });

  std::string expectedDescription;
  RkXmlWriter::writeString(twin, expectedDescription);
  for (int thread = 0; thread < 2; ++thread) {
    EXPECT_TRUE(cycles[thread] == expected) << "thread " << thread;
    EXPECT_EQ(finals[thread], expectedFinal) << "thread " << thread;
    EXPECT_EQ(written[thread], expectedDescription) << "thread " << thread;
  }
}
