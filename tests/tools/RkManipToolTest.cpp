// rkmanip as a user meets it: the real binary on the files of tests/data and examples, its exit status and
// what it prints.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Result {
  int status;
  std::string out;  // standard output
  std::string err;  // standard error
};

std::string quote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

Result rkmanip(const std::vector<std::string>& arguments) {
  char errPath[] = "/tmp/rk_tool_test_XXXXXX";
  const int descriptor = mkstemp(errPath);
  close(descriptor);
  std::string command = quote(RKMANIP);
  for (const std::string& argument : arguments) command += " " + quote(argument);
  command += " 2>" + quote(errPath) + " </dev/null";
  Result result{-1, "", ""};
  FILE* pipe = popen(command.c_str(), "r");
  char buffer[4096];
  for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) result.out.append(buffer, n);
  const int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  std::ifstream err(errPath);
  result.err.assign(std::istreambuf_iterator<char>(err), std::istreambuf_iterator<char>());
  std::remove(errPath);
  return result;
}

std::string data(const std::string& name) {
  return RK_SOURCE_DIR "/tests/data/" + name;
}

std::string example(const std::string& name) {
  return RK_SOURCE_DIR "/examples/" + name;
}

// "FILE:LINE:" of the line holding marker, moved by delta lines.
std::string at(const std::string& path, const std::string& marker, int delta = 0) {
  std::ifstream in(path);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.find(marker) != std::string::npos) return path + ":" + std::to_string(number + delta) + ":";
  }
  ADD_FAILURE() << marker << " is not in " << path;
  return "?";
}

// Whether one message (a line and the tab-indented lines that continue it) names the place and says text.
bool says(const std::string& output, const std::string& place, const std::string& text) {
  std::vector<std::string> messages;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line[0] == '\t' && !messages.empty()) {
      messages.back() += "\n" + line;
    } else {
      messages.push_back(line);
    }
  }
  for (const std::string& message : messages)
    if (message.find(place) != std::string::npos && message.find(text) != std::string::npos) return true;
  return false;
}

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

std::string lastLine(const std::string& text) {
  const std::size_t end = text.find_last_not_of('\n');
  const std::size_t start = text.rfind('\n', end);
  return text.substr(start == std::string::npos ? 0 : start + 1,
                     end - (start == std::string::npos ? 0 : start + 1) + 1);
}

struct Mistake {
  const char* file;
  const char* marker;  // text on the line (or delta lines before it) the message names
  int delta;
  const char* says;
};

const Mistake kMistakes[] = {
    {"translation_two_numbers.xml", "0.45 0.15<", 0, "\"0.45 0.15\" is not three real numbers"},
    {"translation_comma.xml", "0,4 0 0.3", 0, "\"0,4 0 0.3\" is not three real numbers"},
    {"translation_nan.xml", "nan 0 0.3", 0, "\"nan 0 0.3\" of the goal of end effector 0 in frame \"above\""},
    {"orientation_zero.xml", "0 0 0 0", 0, "non-zero quaternion"},
    {"unknown_element.xml", "<speed>", 0, "unknown element \"speed\""},
    {"wrong_count.xml", "count=\"3\"", 0, "array size not equal to attribute value -- 3, actual -- 2"},
    {"order_names_missing_sequence.xml", "pick place", 0,
     "names \"place\", which the sequence map does not hold"},
    {"order_empty.xml", "<sequenceOrder", 0, "the sequence order names no sequence"},
    {"order_empty.xml", "<group>", 0, "XML parser should be in data mode"},
    {"durations.xml", "<timeDuration>-1", 0,
     "timeDuration -1 of frame \"negative\" of sequence \"pick\" is not positive"},
    {"durations.xml", "<tag>missing", 14, "frame \"missing\" of sequence \"pick\" gives no <timeDuration>"},
    {"durations.xml", "<timeDuration>nan", 0,
     "timeDuration nan of frame \"not a number\" of sequence \"pick\" is not a finite"},
    {"durations.xml", "<timeDuration>0<", 0,
     "timeDuration 0 of frame \"zero\" of sequence \"pick\" is not positive"},
    {"frame_without_event.xml", "<standardManipulationFrame>", 0,
     "frame \"endless\" of sequence \"pick\" has no transition event"},
    {"sequence_name_twice.xml", "<key>pick", -1, "key \"pick\" of <sequenceMap> appears at lines 8 and 37"},
    {"too_many_offsets.xml", "<manipulationOffsetContainerVector", 0,
     "gives 2 offsets, but end-effector set 0 of ur5e has 1 end effector"},
    {"misspelt_frame_tag.xml", "standardManipulationFrme", 0,
     "standardManipulationFrme\" tag not registered"},
    {"map_empty_element.xml", "<element/>", 0, "element <element> in <sequenceMap> was not read"},
    {"map_empty_element.xml", "<key>place", -1, "element <element> in <sequenceMap> was not read"},
    {"map_empty_element.xml", "pick place", 0, "names \"place\", which the sequence map does not hold"},
    {"map_stray_text.xml", "    stray", 0,
     "text \"stray\" in <sequenceMap> is not part of any value and was not read"},
    {"map_stray_text.xml", "<key>place", -1, "element <element> in <sequenceMap> was not read"},
    {"frames_stray_text.xml", "    stray", 0,
     "text \"stray\" in <manipulationFrameVector> is not part of any value"},
    {"frames_stray_text.xml", "    stray", 1, "element <element> in <manipulationFrameVector> was not read"},
    {"no_namespace.xml", "<manipulationSequenceManager>", 0, "in namespace \"\", expected namespace"},
    {"parametric_mistakes.xml", "<parametricYTag>slot", 0,
     "in the target frame of frame \"row\" of sequence \"pick\" moves by the data-map value \"slot\", which "
     "no "
     "parametric frame of the task publishes"},
    {"parametric_mistakes.xml", "<parametricValues count=\"0\"", 0,
     "frame \"row\" of sequence \"pick\" gives no value in <parametricValues>"},
    {"parametric_mistakes.xml", "<manipulationFrameVector count=\"0\"", 0,
     "the subsequence of frame \"empty\" of sequence \"pick\" has no frame"},
};

TEST(RkManipTool, clean_documents_pass_validate_with_nothing_printed_but_their_verdict) {
  for (const std::string& path :
       {example("tasks/approach_hold_retreat.xml"), example("tasks/panda_pick_and_place.xml"),
        example("tasks/palletising_row.xml"), example("poses/palletising_row.xml"),
        example("robots/ur5e.endeffectors.xml"), data("clean_two_frames.xml"),
        data("state_trigger_nan.xml")}) {
    const Result result = rkmanip({"validate", path});
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(result.out.find('\n'), result.out.size() - 1) << result.out;
    EXPECT_NE(result.out.find(path + ": valid "), std::string::npos) << result.out;
    EXPECT_NE(result.out.find(", round trip exact"), std::string::npos) << result.out;
    EXPECT_EQ(result.err, "");
  }
}

TEST(RkManipTool, every_mistake_is_named_with_file_and_line_by_validate_and_refused_by_run) {
  std::map<std::string, std::pair<Result, Result>> outputs;  // validate and run, once per file
  for (const Mistake& mistake : kMistakes) {
    const std::string path = data(mistake.file);
    if (!outputs.count(path)) outputs[path] = {rkmanip({"validate", path}), rkmanip({"run", path})};
    const Result& validate = outputs[path].first;
    const Result& run = outputs[path].second;
    const std::string place = at(path, mistake.marker, mistake.delta);
    const bool unreadable = std::string(mistake.file) == "no_namespace.xml";
    EXPECT_EQ(validate.status, unreadable ? 2 : 1) << mistake.file;
    EXPECT_TRUE(says(validate.out, place, mistake.says)) << place << " " << mistake.says << "\n"
                                                         << validate.out;
    EXPECT_EQ(validate.out.find("round trip"), std::string::npos) << validate.out;
    EXPECT_EQ(run.status, 2) << mistake.file;
    EXPECT_TRUE(says(run.out, place, mistake.says)) << place << " " << mistake.says << "\n" << run.out;
    EXPECT_NE(lastLine(run.out).find("nothing was run"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find(" starts at "), std::string::npos) << run.out;
  }
}

TEST(RkManipTool, warnings_leave_the_exit_status_alone_unless_strict) {
  const std::string path = data("orientation_not_unit.xml");
  const std::string warning = "has length 2, not 1, and is used normalised";
  Result result = rkmanip({"validate", path});
  EXPECT_EQ(result.status, 0);
  EXPECT_TRUE(says(result.out, at(path, "0 2 0 0") + " warning:", warning)) << result.out;
  EXPECT_NE(lastLine(result.out).find("valid manipulationSequenceManager, round trip exact; 1 warning"),
            std::string::npos);
  EXPECT_EQ(rkmanip({"validate", path, "--strict"}).status, 1);
  result = rkmanip({"run", path, "--rate", "250"});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_TRUE(says(result.out, at(path, "0 2 0 0"), warning));
  result = rkmanip({"run", path, "--strict"});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.out.find("which --strict refuses; nothing was run"), std::string::npos) << result.out;
}

TEST(RkManipTool, a_goal_out_of_reach_is_warned_of_reported_not_reached_and_fails_when_reaching_is_required) {
  const std::string path = data("unreachable_goal.xml");
  Result result = rkmanip({"run", path, "--rate", "250"});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_TRUE(
      says(result.out, at(path, "3.5 0 0.3") + " warning:", "(3.5 0 0.3) is out of the reach of ur5e"));
  EXPECT_TRUE(says(result.out, "pick: frame 1 \"far away\"", "NOT reached")) << result.out;
  EXPECT_TRUE(says(result.out, "pick: frame 2 \"back\"", "  reached")) << result.out;
  EXPECT_TRUE(says(lastLine(result.out), "1 NOT reached", "the worst was pick: frame 1 \"far away\" at "))
      << result.out;
  result = rkmanip({"run", path, "--rate", "250", "--require-reached"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(lastLine(result.out), "rkmanip run: --require-reached: 1 frame ended short of the goal");
  // A looser tolerance does not hide 2.5 m.
  EXPECT_EQ(rkmanip({"run", path, "--rate", "250", "--require-reached", "--tolerance", "0.5", "3.2"}).status,
            1);
}

TEST(RkManipTool, a_run_tells_where_it_starts_how_each_frame_ended_and_the_truth_at_max_time) {
  const std::string path = example("tasks/approach_hold_retreat.xml");
  const std::string trace = testing::TempDir() + "rk_tool_trace.csv";
  Result result = rkmanip({"run", path, "--require-reached", "--trace", trace});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_EQ(firstLine(result.out),
            "ur5e end effector 0 (tool0) starts at 0.4919 0.1333 0.4879, orientation 0 -0.7071 0.7071 0");
  EXPECT_TRUE(says(result.out, "     2.000 s  approach: frame 1 \"above the part\"  error ", "  reached"));
  EXPECT_TRUE(says(result.out, "     8.005 s  retreat: frame 2 \"clear\"  error ", "  reached"));
  EXPECT_NE(
      lastLine(result.out)
          .find("Complete after 8.005 s simulated, 8005 cycles at 1000 Hz; 5 frames ended, all reached"),
      std::string::npos);
  std::ifstream csv(trace);
  std::string header;
  std::getline(csv, header);
  EXPECT_EQ(header.rfind("time,status,commanded0_x,", 0), 0u) << header;
  std::remove(trace.c_str());

  result = rkmanip({"run", path, "--max-time", "0.05"});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(says(lastLine(result.out), "Stopped at --max-time after 0.050 s simulated",
                   "in approach: frame 1 \"above the part\", whose error "))
      << result.out;
  EXPECT_NE(lastLine(result.out).find("NOT reached; 0 frames ended"), std::string::npos) << result.out;
}

TEST(RkManipTool, a_lenient_run_says_so_first_and_a_goal_that_is_not_a_number_never_moves_the_arm) {
  Result result = rkmanip({"run", data("wrong_count.xml"), "--lenient", "--rate", "250"});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_EQ(firstLine(result.out),
            "rkmanip run: --lenient: running " + data("wrong_count.xml") + " despite 1 error, listed below");
  result = rkmanip({"run", data("translation_nan.xml"), "--lenient"});
  EXPECT_EQ(result.status, 1) << result.out;
  EXPECT_EQ(firstLine(result.out).rfind("rkmanip run: --lenient: running ", 0), 0u);
  EXPECT_NE(lastLine(result.out).find("Failure after 0.000 s simulated"), std::string::npos) << result.out;
  EXPECT_NE(lastLine(result.out).find("the simulated arm refused a step"), std::string::npos) << result.out;
}

TEST(RkManipTool, every_shipped_robot_runs_with_its_tip_from_its_set_up_or_from_tip) {
  Result result = rkmanip({"run", example("tasks/panda_pick_and_place.xml"), "--robot",
                           example("robots/panda.urdf"), "--require-reached", "--rate", "250"});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_EQ(firstLine(result.out).rfind("panda end effector 0 (panda_hand_tcp) starts at 0.3069 0 0.4869", 0),
            0u);
  EXPECT_NE(lastLine(result.out).find("Complete after"), std::string::npos);

  // Two leaves of equal depth and no set-up: the tip must be named.
  const std::string bare = testing::TempDir() + "rk_tool_forked.urdf";
  {
    std::ifstream in(data("robots/forked.urdf"));
    std::ofstream out(bare);
    out << in.rdbuf();
  }
  const std::string task = data("clean_two_frames.xml");
  result = rkmanip({"run", task, "--robot", bare});
  EXPECT_EQ(result.status, 2);
  EXPECT_TRUE(says(result.out, bare + ": error:", "several deepest links")) << result.out;
  EXPECT_TRUE(says(result.out, bare + ": error:", "name the tip link with --tip LINK")) << result.out;
  result = rkmanip({"run", task, "--robot", bare, "--tip", "tool_b", "--max-time", "0.1"});
  EXPECT_TRUE(says(result.out, "rk_tool_forked end effector 0 (tool_b) starts at", "0.7 0.05 0.4"))
      << result.out;
  std::remove(bare.c_str());

  // With its set-up the tip is the set-up's: two point end effectors, tool_a and link3.
  const std::string forked = data("robots/forked.urdf");
  result = rkmanip({"validate", data("clean_two_frames.xml"), "--robot", forked});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_TRUE(says(result.out, "warning:", "gives 1 offset for the 2 end effectors of set 0 of forked"))
      << result.out;
  result = rkmanip({"run", data("too_many_offsets.xml"), "--robot", forked, "--tip", "tool_b"});
  EXPECT_EQ(result.status, 2);
  EXPECT_TRUE(says(result.out, data("robots/forked.endeffectors.xml") + ": error:",
                   "no link 'tool_a' on the chain from 'base' to 'tool_b'"))
      << result.out;
}

TEST(RkManipTool, a_pose_set_reaches_every_cycle_and_each_frame_run_inside_another_is_reported) {
  const std::string task = example("tasks/palletising_row.xml");
  const Result result = rkmanip({"run", task, "--poses", example("poses/palletising_row.xml"), "--rate",
                                 "250", "--strict", "--require-reached"});
  EXPECT_EQ(result.status, 0) << result.out;
  // Each inner frame and each value of the row ends with a line of its own, naming the value.
  EXPECT_TRUE(
      says(result.out, "palletise: frame 1 \"grasp the sheet / close the gripper\"  error ", "  reached"))
      << result.out;
  EXPECT_TRUE(says(result.out, "palletise: frame 5 \"row / slot y=0.07 / part / down to the slot\"  error ",
                   "  reached"));
  EXPECT_TRUE(
      says(result.out, "palletise: frame 5 \"row / slot y=0.07 / part / lift clear\"  error ", "  reached"));
  EXPECT_TRUE(
      says(result.out, "palletise: frame 5 \"row / slot y=0.21 / part / lift clear\"  error ", "  reached"));
  EXPECT_NE(lastLine(result.out).find("; 34 frames ended, all reached"), std::string::npos) << result.out;
}

TEST(RkManipTool,
     the_poses_a_task_names_are_checked_before_the_run_and_a_missing_one_is_named_when_it_fails) {
  const std::string task = example("tasks/palletising_row.xml");
  const std::string poses = data("poses_far_pick.xml");
  Result result = rkmanip({"validate", task, "--poses", poses});
  EXPECT_EQ(result.status, 1) << result.out;
  EXPECT_TRUE(
      says(result.out, at(task, "<name>place") + " error:",
           "frame \"lay the sheet\" of sequence \"palletise\" is the pose \"place\", which the pose set " +
               poses + " does not hold (it holds \"pick\")"))
      << result.out;
  EXPECT_TRUE(says(result.out, at(task, "<name>pick") + " warning:",
                   "at the pose \"pick\" (1.5 0 0.12) is out of the reach of ur5e"));

  result = rkmanip({"run", task});
  EXPECT_EQ(result.status, 2);
  EXPECT_TRUE(says(
      result.out, at(task, "<name>pick") + " error:",
      "is the pose \"pick\", but no pose set is given, so the frame cannot start; give one with --poses"))
      << result.out;

  // Run anyway, the frame that goes to the missing pose fails, and the summary says which pose it was.
  result = rkmanip({"run", task, "--poses", poses, "--lenient", "--rate", "250"});
  EXPECT_EQ(result.status, 1) << result.out;
  EXPECT_NE(lastLine(result.out)
                .find("in palletise: frame 2 \"lay the sheet\": the pose \"place\" is not in the pose set " +
                      poses),
            std::string::npos)
      << result.out;

  result = rkmanip({"run", task, "--poses", task});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(lastLine(result.out),
            "rkmanip run: " + task +
                " holds a <manipulationSequenceManager>, which is not a pose set; --poses takes "
                "a poseSet document; nothing was run");
}

TEST(RkManipTool, numbers_that_cannot_time_a_run_are_refused_with_the_usage_line) {
  const std::string task = example("tasks/approach_hold_retreat.xml");
  for (const std::vector<std::string>& option : {std::vector<std::string>{"--rate", "nan"},
                                                 {"--rate", "0"},
                                                 {"--rate", "-10"},
                                                 {"--rate", "inf"},
                                                 {"--max-time", "nan"},
                                                 {"--max-time", "-1"},
                                                 {"--max-time", "inf"},
                                                 {"--tolerance", "0"}}) {
    const Result result = rkmanip({"run", task, option[0], option[1]});
    EXPECT_EQ(result.status, 2) << option[0] << " " << option[1];
    EXPECT_NE(result.err.find(option[0]), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("usage: rkmanip run TASK.xml"), std::string::npos) << result.err;
    EXPECT_EQ(result.out, "");
  }
  const Result zero = rkmanip({"run", task, "--max-time", "0"});
  EXPECT_EQ(zero.status, 1);
  EXPECT_NE(lastLine(zero.out).find("Stopped at --max-time after 0.000 s simulated, 1 cycle at 1000 Hz"),
            std::string::npos)
      << zero.out;
}

}  // namespace

namespace {

std::string fileText(const std::string& path) {
  std::ifstream in(path);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

TEST(RkManipTool, an_action_of_a_library_runs_as_its_own_document_does_and_list_shows_every_path) {
  const std::string library = example("library/cell_actions.xml");
  const std::string alone = example("tasks/ur5e_square_zones.xml");
  char tracePath[] = "/tmp/rk_tool_trace_XXXXXX";
  close(mkstemp(tracePath));
  const std::string libraryTrace = std::string(tracePath) + ".library";
  const Result fromLibrary =
      rkmanip({"run", library, "--action", "squares/zones", "--strict", "--trace", libraryTrace});
  const Result fromFile = rkmanip({"run", alone, "--strict", "--trace", tracePath});
  EXPECT_EQ(fromLibrary.status, 0) << fromLibrary.out;
  EXPECT_EQ(fromFile.status, 0) << fromFile.out;
  EXPECT_EQ(fromLibrary.out, fromFile.out);
  EXPECT_EQ(fileText(libraryTrace), fileText(tracePath));
  EXPECT_GT(fileText(tracePath).size(), 1000u);
  std::remove(tracePath);
  std::remove(libraryTrace.c_str());

  const Result pick = rkmanip({"run", library, "--action", "pick_and_place/pick", "--require-reached"});
  EXPECT_EQ(pick.status, 0) << pick.out;
  EXPECT_TRUE(says(pick.out, "frame 2 \"down to the part\"  error ", "  reached")) << pick.out;
  EXPECT_EQ(lastLine(pick.out).rfind("Complete after ", 0), 0u) << pick.out;

  const Result listing = rkmanip({"list", library});
  EXPECT_EQ(listing.status, 0);
  EXPECT_EQ(listing.out,
            "directory  palletising/\n"
            "action     palletising/row  (manipulationSequence)\n"
            "directory  pick_and_place/\n"
            "action     pick_and_place/pick  (manipulationSequence)\n"
            "action     pick_and_place/place  (manipulationSequence)\n"
            "directory  squares/\n"
            "action     squares/stop_points  (waypointSequence)\n"
            "action     squares/zones  (waypointSequence)\n");
  const Result notLibrary = rkmanip({"list", alone});
  EXPECT_EQ(notLibrary.status, 2);
  EXPECT_NE(lastLine(notLibrary.out).find("cannot be read as a manipulationActionDirectory"),
            std::string::npos);
}

TEST(RkManipTool, a_library_path_that_names_nothing_is_refused_with_what_the_library_holds_near_it) {
  const std::string library = example("library/cell_actions.xml");
  const std::map<std::string, std::string> nearby = {
      {"pick_and_place/pock", "its directory \"pick_and_place/\" holds pick, place"},
      {"squares/zones/deeper", "its directory \"squares/\" holds stop_points, zones"},
      {"pick_and_place/", "its directory \"pick_and_place/\" holds pick, place"},
      {"nowhere/pick", "its top directory holds palletising/, pick_and_place/, squares/"},
      {"squares", "its top directory holds palletising/, pick_and_place/, squares/"},
      {"/squares/zones", "its top directory holds palletising/, pick_and_place/, squares/"},
  };
  for (const auto& entry : nearby) {
    const Result result = rkmanip({"run", library, "--action", entry.first});
    EXPECT_EQ(result.status, 2) << entry.first;
    EXPECT_EQ(result.out, "rkmanip run: " + library + ": the library holds no action at \"" + entry.first +
                              "\"; " + entry.second + "\n");
  }
  const Result noAction = rkmanip({"run", library});
  EXPECT_EQ(noAction.status, 2);
  EXPECT_NE(noAction.out.find("name the one to run with --action PATH"), std::string::npos) << noAction.out;
  const Result notLibrary = rkmanip({"run", example("tasks/pick_and_place.xml"), "--action", "pick"});
  EXPECT_EQ(notLibrary.status, 2);
  EXPECT_NE(notLibrary.out.find("--action takes a manipulationActionDirectory"), std::string::npos);
}

TEST(RkManipTool, a_library_is_checked_whole_by_validate_and_only_the_chosen_action_before_a_run) {
  const std::string library = data("library_one_bad_action.xml");
  const std::string problem =
      "the timeDuration -1 of frame \"backwards\" of action \"cell/bad\" is not positive";
  const Result validated = rkmanip({"validate", library});
  EXPECT_EQ(validated.status, 1) << validated.out;
  EXPECT_TRUE(says(validated.out, at(library, "<timeDuration>-1"), problem)) << validated.out;
  const Result bad = rkmanip({"run", library, "--action", "cell/bad"});
  EXPECT_EQ(bad.status, 2);
  EXPECT_TRUE(says(bad.out, at(library, "<timeDuration>-1"), problem)) << bad.out;
  for (const char* good : {"cell/good", "hold"}) {
    const Result result = rkmanip({"run", library, "--action", good, "--strict"});
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_EQ(result.out.find("backwards"), std::string::npos) << result.out;
  }
}

TEST(RkManipTool, tolerances_interpolation_times_and_links_that_cannot_work_are_refused_with_their_lines) {
  const std::string task = data("relative_mistakes.xml");
  const std::string panda = example("robots/panda.urdf");
  const Result validated = rkmanip({"validate", task, "--robot", panda});
  EXPECT_EQ(validated.status, 1) << validated.out;
  EXPECT_TRUE(
      says(validated.out, at(task, "<placementTolerance>0<"),
           "the placementTolerance 0 of frame \"in front of the arm\" of sequence \"relative\" is not "
           "a positive finite number"))
      << validated.out;
  EXPECT_TRUE(says(validated.out, at(task, "<interpolationTime>-1"), "the interpolationTime -1 of"));
  EXPECT_TRUE(says(validated.out, at(task, "panda_link9"),
                   "is relative to the link \"panda_link9\", which panda does not have (its links: "
                   "panda_link1, "));
  EXPECT_NE(lastLine(validated.out).find("3 errors"), std::string::npos) << validated.out;
  const Result run = rkmanip({"run", task, "--robot", panda});
  EXPECT_EQ(run.status, 2);
}

TEST(RkManipTool, the_summary_gives_the_largest_error_a_placement_achieved_frame_ended_with) {
  const Result placed = rkmanip({"run", example("tasks/pick_and_place.xml")});
  EXPECT_EQ(placed.status, 0) << placed.out;
  // Every frame ended by a placement-achieved event ends within its 0.5 mm.
  const std::string prefix = "placement-achieved frames: largest error at the end 0.4";
  const std::size_t line = placed.out.find(prefix);
  ASSERT_NE(line, std::string::npos) << placed.out;
  EXPECT_NE(placed.out.find(" mm (place: frame 2 \"down to the tray\")\n", line), std::string::npos)
      << placed.out;
  EXPECT_EQ(lastLine(placed.out).rfind("Complete after", 0), 0u);
  // A task of timed frames only has no such line.
  const Result timed = rkmanip({"run", example("tasks/approach_hold_retreat.xml")});
  EXPECT_EQ(timed.out.find("placement-achieved"), std::string::npos) << timed.out;
}

// rkmanip show on every example, compared with its expected text in tests/data/show/NAME.txt. After a
// deliberate change, RK_SHOW_EXPECTED_UPDATE=1 build/tests/tools/rk_tool_tests --gtest_filter='*show*'
// rewrites them; read the diff before committing it.
namespace {

struct Shown {
  std::string name;
  std::vector<std::string> arguments;
};

std::vector<Shown> shownExamples() {
  std::vector<Shown> shown;
  for (const auto& entry : std::filesystem::directory_iterator(example("tasks"))) {
    if (entry.path().extension() == ".xml")
      shown.push_back({entry.path().stem().string(), {entry.path().string()}});
  }
  shown.push_back({"cell_actions", {example("library/cell_actions.xml")}});
  shown.push_back(
      {"cell_actions.pick", {example("library/cell_actions.xml"), "--action", "pick_and_place/pick"}});
  shown.push_back({"palletising_row.poses",
                   {example("tasks/palletising_row.xml"), "--poses", example("poses/palletising_row.xml")}});
  std::sort(shown.begin(), shown.end(), [](const Shown& a, const Shown& b) { return a.name < b.name; });
  return shown;
}

Result show(const std::vector<std::string>& arguments, bool dot = false) {
  std::vector<std::string> command{"show"};
  if (dot) command.push_back("--dot");
  command.insert(command.end(), arguments.begin(), arguments.end());
  return rkmanip(command);
}

}  // namespace

TEST(RkManipTool, show_prints_every_example_as_its_expected_outline) {
  const bool update = std::getenv("RK_SHOW_EXPECTED_UPDATE") != nullptr;
  for (const Shown& example : shownExamples()) {
    const Result shown = show(example.arguments);
    EXPECT_EQ(shown.status, 0) << example.name << "\n" << shown.err;
    EXPECT_EQ(shown.err, "") << example.name;
    const std::string path = data("show/" + example.name + ".txt");
    if (update) {
      std::ofstream(path) << shown.out;
      continue;
    }
    std::ifstream in(path);
    EXPECT_TRUE(in) << path << " is missing; RK_SHOW_EXPECTED_UPDATE=1 writes it";
    const std::string expected{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    EXPECT_EQ(shown.out, expected) << example.name << " differs from " << path;
  }
}

TEST(RkManipTool,
     show_gives_settings_off_their_defaults_durations_of_nested_frames_and_refuses_what_it_cannot_read) {
  const Result shown = show({data("show_settings.xml")});
  EXPECT_EQ(shown.status, 0) << shown.err;
  const char* const lines[] = {
      "show_settings.xml (at least 3 s, starts at 0 s): 2 frames\n",
      // Settings the outline has no words for are shown by their tags, and only when off their defaults.
      "    activeEndEffectorSet: 1\n",
      "      placementConvergenceWindow: 2.5\n",
      "      translation 0.4 0 0.3 m, quaternion 0.707107 0 0 0.707107 (roll 0°, pitch 0°, yaw 90°)\n",
      "      x axis: 1 0 0 in the system frame\n      y axis: undefined (made from the others)\n"
      "      z axis: 0 0 1 in the primary frame\n",
      "    ends when end effectors 0 and 1 are each within 0.002 m of their goals\n"
      "      ends the frame all the same if the arm stops converging short of it (soft failure)\n",
      // A subsequence frame lasts as long as the longer of its sequence and its own event.
      "  frame 2 \"held \"tight\" \\ here\" (3 s): runs a sequence of 1 frame\n",
      "relative to the goal of frame 8, which the sequence does not have, so the frame cannot start\n",
      "        offset translation 0 0 0.05 m, quaternion 0.92388 0.382683 0 0 (roll 45°, pitch 0°, yaw 0°)\n",
  };
  for (const char* line : lines) EXPECT_NE(shown.out.find(line), std::string::npos) << line << shown.out;
  for (const char* unset : {"convergenceWindow: 1", "activeControl", "extendedZone", "frameIndex"})
    EXPECT_EQ(shown.out.find(unset), std::string::npos) << unset;

  // A document that does not read: the reader's one line, with file and line, and status 2.
  char unreadablePath[] = "/tmp/rk_show_unreadable_XXXXXX";
  close(mkstemp(unreadablePath));
  const std::string path = unreadablePath;
  std::ofstream(path) << "<manipulationSequenceManager xmlns=\"http://rkmanipulation.org/namespace/ct#\">\n"
                         "<sequenceOrder>\n</manipulationSequenceManager>\n";
  const Result unreadable = show({path});
  std::remove(path.c_str());
  EXPECT_EQ(unreadable.status, 2);
  EXPECT_EQ(unreadable.out, "");
  EXPECT_EQ(std::count(unreadable.err.begin(), unreadable.err.end(), '\n'), 1) << unreadable.err;
  EXPECT_NE(unreadable.err.find(path + ":3: Opening and ending tag mismatch"), std::string::npos)
      << unreadable.err;
  EXPECT_EQ(show({example("tasks/pick_and_place.xml"), "--action", "pick"}).status, 2);
  const Result missing = show({example("library/cell_actions.xml"), "--action", "pick_and_place/lift"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_NE(missing.err.find("holds no action at \"pick_and_place/lift\""), std::string::npos) << missing.err;
}

TEST(RkManipTool, show_dot_of_every_example_is_drawn_by_graphviz_without_a_warning) {
  if (std::system("command -v dot >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "dot (graphviz) is not installed; scripts/install-deps installs it";
  std::vector<Shown> examples = shownExamples();
  examples.push_back({"show_settings", {data("show_settings.xml")}});
  for (const Shown& example : examples) {
    const Result graph = show(example.arguments, true);
    ASSERT_EQ(graph.status, 0) << example.name;
    EXPECT_EQ(graph.out.rfind("digraph task {\n", 0), 0u) << example.name;
    char path[] = "/tmp/rk_show_dot_XXXXXX";
    const int descriptor = mkstemp(path);
    close(descriptor);
    std::ofstream(path) << graph.out;
    const std::string command = "dot -Tsvg " + quote(path) + " 2>&1 >/dev/null";
    std::string warnings;
    FILE* pipe = popen(command.c_str(), "r");
    char buffer[4096];
    for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) warnings.append(buffer, n);
    const int status = pclose(pipe);
    std::remove(path);
    EXPECT_EQ(status, 0) << example.name << ": " << warnings;
    EXPECT_EQ(warnings, "") << example.name;
  }
}

TEST(RkManipTool, each_waypoint_is_reported_at_its_hand_over_and_one_short_of_its_goal_fails_when_required) {
  const Result zones = rkmanip({"run", example("tasks/ur5e_square_zones.xml"), "--require-reached"});
  EXPECT_EQ(zones.status, 0) << zones.out;
  // A corner rounded inside its zone counts as reached when the tool came within the zone.
  for (const char* corner : {"waypoint 2 \"corner_1\"", "waypoint 3 \"corner_2\"", "waypoint 4 \"corner_3\""})
    EXPECT_TRUE(
        says(zones.out, std::string(" s  ") + corner + "  passed ", " mm from it, zone 20.000 mm  reached"))
        << corner << "\n"
        << zones.out;
  // The last one is handed over at its goal, which must be within the tolerance.
  EXPECT_TRUE(says(zones.out, " s  waypoint 5 \"end\"  error ", "  reached")) << zones.out;
  EXPECT_NE(zones.out.find("waypoints rounded inside their zone: the widest passed "), std::string::npos);
  EXPECT_NE(lastLine(zones.out).find("; 5 waypoints ended, all reached; the worst was waypoint "),
            std::string::npos)
      << zones.out;

  // A stop point closer than 1e-5 to its goal, judged against a tighter tolerance, is reported short.
  const Result tight = rkmanip({"run", example("library/cell_actions.xml"), "--action", "squares/stop_points",
                                "--tolerance", "1e-6", "--require-reached"});
  EXPECT_EQ(tight.status, 1) << tight.out;
  EXPECT_TRUE(says(tight.out, " s  waypoint 5 \"end\"  error ", "  NOT reached")) << tight.out;
  EXPECT_NE(tight.out.find("waypoints handed over at their goal: largest error at the hand-over 0.0"),
            std::string::npos)
      << tight.out;
  const std::string verdict = lastLine(tight.out);
  EXPECT_EQ(verdict.rfind("rkmanip run: --require-reached: ", 0), 0u) << tight.out;
  EXPECT_NE(verdict.find(" waypoints ended short of the goal; the worst was waypoint "), std::string::npos);
  EXPECT_EQ(verdict.substr(verdict.size() - 13), "  NOT reached") << verdict;
}
