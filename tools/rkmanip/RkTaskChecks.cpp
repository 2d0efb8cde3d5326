#include "tools/rkmanip/RkTaskChecks.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "control/RkControlTokens.h"
#include "events/RkManipulationPlacementAchievedTransitionEvent.h"
#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "frames/RkParametricManipulationFrame.h"
#include "frames/RkStandardManipulationFrame.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "frames/RkSubsequenceManipulationFrame.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "offsets/RkInterpolatedManipulationOffset.h"
#include "offsets/RkLinkRelativeManipulationOffset.h"
#include "offsets/RkParametricTranslationManipulationOffset.h"
#include "offsets/RkReferencePoseManipulationOffset.h"
#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationActionDirectory.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "sequencing/RkManipulationTokens.h"
#include "sequencing/RkPoseSet.h"
#include "simulation/RkSimulatedTaskRunner.h"
#include "xml/RkXmlText.h"
#include "xml/RkXmlTokens.h"

namespace {

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string number(RkReal value) {
  std::string text;
  RkXmlText::format(value, text);
  return text;
}

std::string plural(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

// "frame "above" of sequence "pick"", or "frame 2 of ..." for a frame without a tag; owner names the
// sequence, empty for a sequence standing alone.
std::string frameName(const RkManipulationFrame& frame, RkU32 index, const std::string& owner) {
  const std::string& tag = frame.tag().value();
  std::string text = tag.empty() ? "frame " + std::to_string(index + 1) : "frame " + quoted(tag);
  return owner.empty() ? text : text + " of " + owner;
}

// A frame's answers that do not depend on its state are asked with this one.
const RkStandardManipulationFrameState& anyState() {
  static const RkStandardManipulationFrameState state;
  return state;
}

// "slot y=0.1" for a tag that ends in "=", "depth = 0.1" otherwise.
std::string valueText(const std::string& tag, RkReal value) {
  return tag + (!tag.empty() && tag.back() == '=' ? "" : " = ") + number(value);
}

const RkU32 kNoEndEffector = 0xFFFFFFFFu;

}  // namespace

RkTaskChecks::RkTaskChecks(const std::string& file, const RkSimulatedTaskRunner* robot,
                           const std::string& robotName, RkDiagnostics& out, const RkPoseSource& poses,
                           const std::string& actionPath)
    : m_file(file),
      m_robot(robot),
      m_robotName(robotName),
      m_out(out),
      m_poses(poses),
      m_actionPath(actionPath) {}

bool RkTaskChecks::needsRobot(const RkXmlObject& object) {
  return dynamic_cast<const RkManipulationSequenceManager*>(&object) ||
         dynamic_cast<const RkManipulationActionDirectory*>(&object) ||
         dynamic_cast<const RkManipulationActionContainer*>(&object) ||
         dynamic_cast<const RkManipulationSequence*>(&object) ||
         dynamic_cast<const RkManipulationFrame*>(&object) ||
         dynamic_cast<const RkConstantManipulationOffset*>(&object);
}

void RkTaskChecks::check(const RkXmlObject& object, const Place& place) {
  collectPublished(object);
  if (const auto* manager = dynamic_cast<const RkManipulationSequenceManager*>(&object)) {
    checkManager(*manager, place);
  } else if (const auto* directory = dynamic_cast<const RkManipulationActionDirectory*>(&object)) {
    checkDirectory(*directory, place, "");
  } else if (const auto* container = dynamic_cast<const RkManipulationActionContainer*>(&object)) {
    if (container->element()) check(*container->element(), place.child(container->element()->token()));
  } else if (const auto* sequence = dynamic_cast<const RkManipulationSequence*>(&object)) {
    checkSequence(*sequence, place, "the sequence", "", Published());
  } else if (const auto* frame = dynamic_cast<const RkManipulationFrame*>(&object)) {
    checkFrame(*frame, place, frameName(*frame, 0, ""), Published());
  } else if (const auto* offset = dynamic_cast<const RkConstantManipulationOffset*>(&object)) {
    checkPlacement(offset->offset(), place.child(RkManipulation::RkManipulationOffsetToken), "the offset",
                   m_robot ? m_robot->setUp().activeEndEffectorSet() : 0, 0);
  } else if (const auto* poses = dynamic_cast<const RkPoseSet*>(&object)) {
    checkPoses(*poses, place);
  }
}

void RkTaskChecks::collectPublished(const RkXmlObject& object) {
  if (const auto* manager = dynamic_cast<const RkManipulationSequenceManager*>(&object)) {
    for (const auto& entry : manager->sequenceMap().mapContainer()) collectPublished(entry.second);
  } else if (const auto* container = dynamic_cast<const RkManipulationActionContainer*>(&object)) {
    if (container->element()) collectPublished(*container->element());
  } else if (const auto* sequence = dynamic_cast<const RkManipulationSequence*>(&object)) {
    const auto& frames = sequence->manipulationFrameContainerVector();
    for (RkU32 i = 0; i < frames.size(); ++i)
      if (frames[i].element()) collectPublished(*frames[i].element());
  } else if (const auto* frame = dynamic_cast<const RkManipulationFrame*>(&object)) {
    collectPublished(*frame);
  }
}

void RkTaskChecks::collectPublished(const RkManipulationFrame& frame) {
  if (const auto* parametric = dynamic_cast<const RkParametricManipulationFrame*>(&frame)) {
    m_publishedAnywhere.insert(parametric->parametricTag());
    if (parametric->targetFrame().element()) collectPublished(*parametric->targetFrame().element());
  } else if (const auto* subsequence = dynamic_cast<const RkSubsequenceManipulationFrame*>(&frame)) {
    collectPublished(subsequence->subsequence());
  }
}

void RkTaskChecks::checkManager(const RkManipulationSequenceManager& manager, const Place& place) {
  const Place order = place.child(RkManipulation::RkSequenceOrderToken);
  const Place map = place.child(RkManipulation::RkSequenceMapToken);
  const auto& names = manager.sequenceOrder();
  const auto& sequences = manager.sequenceMap().mapContainer();
  if (names.size() == 0) {
    m_out.error(
        m_file, order.line(),
        "the sequence order names no sequence, so the task cannot start; name the sequences to run in "
        "<sequenceOrder>");
  }
  if (sequences.empty()) {
    m_out.error(m_file, map.line(),
                "the sequence map holds no sequence, so the task cannot start; add the sequences under "
                "<sequenceMap>");
  }
  std::string held;
  for (const auto& entry : sequences) held += (held.empty() ? "" : ", ") + quoted(entry.first.value());
  std::set<std::string> missing;
  for (RkU32 i = 0; i < names.size(); ++i) {
    const std::string& name = names[i].value();
    if (manager.sequenceMap().find(name) || !missing.insert(name).second) continue;
    m_out.error(m_file, order.child(RkXml::RkGroupToken).line(),
                "the sequence order names " + quoted(name) + ", which the sequence map does not hold" +
                    (held.empty() ? std::string() : " (it holds " + held + ")") +
                    ", so the run would fail there; add it to the map or remove it from the order");
  }
  const std::vector<Place> entries = map.children(RkXml::RkElementToken);
  std::size_t index = 0;
  for (const auto& entry : sequences) {
    const Place value = index < entries.size() ? entries[index].child(RkXml::RkValueToken) : map;
    const std::string name = "sequence " + quoted(entry.first.value());
    checkSequence(entry.second, value, name, name, Published());
    ++index;
  }
}

// Each action of the library (or only the one named) is checked as its own task: a sequence under the name
// "action "PATH"".
void RkTaskChecks::checkDirectory(const RkManipulationActionDirectory& directory, const Place& place,
                                  const std::string& prefix) {
  const std::vector<Place> subdirectories =
      place.child(RkManipulation::RkSubdirectoryMapToken).children(RkXml::RkElementToken);
  std::size_t index = 0;
  for (const auto& entry : directory.subdirectoryMap().mapContainer()) {
    const std::string path = prefix + entry.first.value();
    const Place value =
        index < subdirectories.size() ? subdirectories[index].child(RkXml::RkValueToken) : place;
    if (m_actionPath.empty() || m_actionPath.compare(0, path.size(), path) == 0)
      checkDirectory(entry.second, value, path);
    ++index;
  }
  const std::vector<Place> actions =
      place.child(RkManipulation::RkActionMapToken).children(RkXml::RkElementToken);
  index = 0;
  for (const auto& entry : directory.actionMap().mapContainer()) {
    const std::string path = prefix + entry.first.value();
    const Place value = index++ < actions.size() ? actions[index - 1].child(RkXml::RkValueToken) : place;
    const RkManipulationAction* action = entry.second.element();
    if ((!m_actionPath.empty() && path != m_actionPath) || !action) continue;
    collectPublished(*action);
    const Place at = value.child(action->token());
    if (const auto* sequence = dynamic_cast<const RkManipulationSequence*>(action)) {
      const std::string name = "action " + quoted(path);
      checkSequence(*sequence, at, name, name, Published());
    } else {
      check(*action, at);
    }
  }
}

void RkTaskChecks::checkSequence(const RkManipulationSequence& sequence, const Place& place,
                                 const std::string& what, const std::string& owner,
                                 const Published& published) {
  const Place frames = place.child(RkManipulation::RkManipulationFrameContainerVectorToken);
  const auto& containers = sequence.manipulationFrameContainerVector();
  if (containers.size() == 0) {
    m_out.error(m_file, frames.line(),
                what + " has no frame, so it cannot start; add frames to its <manipulationFrameVector>");
  }
  const std::vector<Place> entries = frames.children(RkXml::RkElementToken);
  for (RkU32 i = 0; i < containers.size(); ++i) {
    const Place entry = i < entries.size() ? entries[i] : frames;
    const RkManipulationFrame* frame = containers[i].element();
    if (!frame) {
      // A frame whose tag was not read has been reported already.
      if (!entry.holdsUnread()) {
        m_out.error(
            m_file, entry.line(),
            "entry " + std::to_string(i + 1) + " of the frames of " + what +
                " holds no frame, so the run would fail there; put a <standardManipulationFrame> in it");
      }
      continue;
    }
    checkFrame(*frame, entry.child(frame->token()), frameName(*frame, i, owner), published);
  }
}

void RkTaskChecks::checkFrame(const RkManipulationFrame& frame, const Place& place, const std::string& what,
                              const Published& published) {
  if (const auto* standard = dynamic_cast<const RkStandardManipulationFrame*>(&frame)) {
    checkEvent(standard->transitionEventContainer(anyState()).element(), place, what, true);
    checkOffsets(*standard, place, what, published);
  } else if (const auto* subsequence = dynamic_cast<const RkSubsequenceManipulationFrame*>(&frame)) {
    checkEvent(subsequence->transitionEventContainer(anyState()).element(), place, what, false);
    const std::string inner = "the subsequence of " + what;
    checkSequence(subsequence->subsequence(), place.child(RkManipulation::RkManipulationSequenceToken), inner,
                  inner, published);
  } else if (const auto* parametric = dynamic_cast<const RkParametricManipulationFrame*>(&frame)) {
    checkEvent(parametric->transitionEventContainer(anyState()).element(), place, what, false);
    const std::string& tag = parametric->parametricTag();
    const Place valuesPlace = place.child(RkManipulation::RkParametricValuesToken);
    if (tag.empty()) {
      m_out.error(m_file, place.child(RkManipulation::RkParametricTagToken).line(),
                  what +
                      " names no <parametricTag>, so the frame cannot start; name the data-map value its "
                      "target frame's offsets read");
    }
    std::vector<RkReal> values;
    for (const auto& value : parametric->parametricValues().vectorContainer()) values.push_back(value);
    if (values.empty()) {
      m_out.error(
          m_file, valuesPlace.line(),
          what + " gives no value in <parametricValues>, so the frame cannot start; give at least one");
    }
    for (RkReal value : values) {
      if (std::isfinite(value)) continue;
      m_out.error(m_file, valuesPlace.line(),
                  "the parametric value " + number(value) + " of " + what +
                      " is not a finite number, and would be published as it is; give finite numbers");
      break;
    }
    const Place targetPlace = place.child(RkManipulation::RkTargetFrameToken);
    const RkManipulationFrame* target = parametric->targetFrame().element();
    if (!target) {
      if (!targetPlace.holdsUnread()) {
        m_out.error(m_file, place.line(),
                    what +
                        " has no frame in its <targetFrame>, so it cannot start; put the frame to run for "
                        "each value in it");
      }
      return;
    }
    Published inner = published;
    if (!tag.empty()) inner[tag] = values;
    checkFrame(*target, targetPlace.child(target->token()), "the target frame of " + what, inner);
  }
}

void RkTaskChecks::checkEvent(const RkManipulationFrameTransitionEvent* event, const Place& place,
                              const std::string& what, bool required) {
  const Place container = place.child(RkManipulation::RkManipulationFrameTransitionEventContainerToken);
  if (!event) {
    if (required && !container.holdsUnread()) {
      m_out.error(m_file, place.line(),
                  what +
                      " has no transition event, so it can never end; add a "
                      "<manipulationFrameTransitionEventContainer> holding a <timeDurationTransitionEvent>");
    }
    return;
  }
  const Place eventPlace = container.child(event->token());
  if (const auto* placed = dynamic_cast<const RkManipulationPlacementAchievedTransitionEvent*>(event)) {
    const RkReal tolerance = placed->tolerance();
    if (!(std::isfinite(tolerance) && tolerance > 0.0)) {
      m_out.error(m_file, eventPlace.child(RkManipulation::RkPlacementToleranceToken).line(),
                  "the placementTolerance " + number(tolerance) + " of " + what +
                      " is not a positive finite number, so the frame cannot start; give the largest "
                      "placement error that counts as reached");
    }
    return;
  }
  const auto* timed = dynamic_cast<const RkManipulationTimeDurationTransitionEvent*>(event);
  if (!timed) return;
  const Place duration = eventPlace.child(RkManipulation::RkTimeDurationToken);
  const RkReal seconds = timed->timeDuration();
  if (!duration.inSource()) {
    if (!eventPlace.holdsUnread()) {
      m_out.error(
          m_file, eventPlace.line(),
          "the time-duration event of " + what +
              " gives no <timeDuration>, so the frame cannot start; give a positive number of seconds");
    }
  } else if (!std::isfinite(seconds)) {
    m_out.error(m_file, duration.line(),
                "the timeDuration " + number(seconds) + " of " + what +
                    " is not a finite number; give a positive number of seconds");
  } else if (seconds <= 0.0) {
    m_out.error(m_file, duration.line(),
                "the timeDuration " + number(seconds) + " of " + what +
                    " is not positive, so the frame cannot start; give a positive number of seconds");
  }
}

void RkTaskChecks::checkOffsets(const RkStandardManipulationFrame& frame, const Place& place,
                                const std::string& what, const Published& published) {
  const Place offsets = place.child(RkManipulation::RkManipulationOffsetContainerVectorToken);
  const auto& containers = frame.offsetContainerVector(anyState());
  const RkU32 count = containers.size();
  RkU32 set = frame.activeEndEffectorSet(anyState());
  RkU32 endEffectors = count;
  if (m_robot) {
    const RkSimulatedEndEffectorSets& setUp = m_robot->setUp();
    const RkU32 sets = setUp.endEffectorSets().size();
    const Place setPlace = place.child(RkControl::RkActiveEndEffectorSetToken);
    if (set == 0xFFFFFFFFu) set = setUp.activeEndEffectorSet();
    if (set >= sets) {
      m_out.error(m_file, setPlace.line(),
                  what + " uses end-effector set " + std::to_string(set) + ", but " + m_robotName + " has " +
                      plural(sets, "set", "sets") + "; choose one below " + std::to_string(sets) +
                      ", or 4294967295 for the active set");
      return;
    }
    if (set != setUp.activeEndEffectorSet()) {
      m_out.warning(m_file, setPlace.line(),
                    what + " uses end-effector set " + std::to_string(set) + ", but the simulated " +
                        m_robotName + " drives only its active set " +
                        std::to_string(setUp.activeEndEffectorSet()) +
                        ", whose end effectors take the frame's goals; use the active set");
    }
    endEffectors = setUp.endEffectorSets()[set].size();
    if (count > endEffectors) {
      m_out.error(m_file, offsets.line(),
                  what + " gives " + plural(count, "offset", "offsets") + ", but end-effector set " +
                      std::to_string(set) + " of " + m_robotName + " has " +
                      plural(endEffectors, "end effector", "end effectors") +
                      ", so the extra offsets would be ignored; remove them");
    } else if (count > 0 && count < endEffectors) {
      m_out.warning(m_file, offsets.line(),
                    what + " gives " + plural(count, "offset", "offsets") + " for the " +
                        plural(endEffectors, "end effector", "end effectors") + " of set " +
                        std::to_string(set) + " of " + m_robotName +
                        ", so the others hold where they are; give one offset per end effector to move them");
    }
  }
  const std::vector<Place> entries = offsets.children(RkXml::RkElementToken);
  for (RkU32 i = 0; i < count; ++i) {
    const Place entry = i < entries.size() ? entries[i] : offsets;
    const RkManipulationOffset* offset = containers[i].element();
    if (!offset) {
      if (!entry.holdsUnread()) {
        m_out.error(
            m_file, entry.line(),
            "entry " + std::to_string(i + 1) + " of the offsets of " + what +
                " holds no offset, so the frame cannot start; put a <constantManipulationOffset> in it");
      }
      continue;
    }
    checkOffset(*offset, entry.child(offset->token()),
                "the goal of end effector " + std::to_string(i) + " in " + what, set,
                i < endEffectors ? i : kNoEndEffector, published);
  }
}

std::vector<RkTaskChecks::Goal> RkTaskChecks::checkOffset(const RkManipulationOffset& offset,
                                                          const Place& place, const std::string& what,
                                                          RkU32 set, RkU32 endEffector,
                                                          const Published& published) {
  std::vector<Goal> goals;
  int line = place.line();
  if (const auto* constant = dynamic_cast<const RkConstantManipulationOffset*>(&offset)) {
    checkPlacement(constant->offset(), place.child(RkManipulation::RkManipulationOffsetToken), what, set,
                   endEffector);
    goals.push_back({"", &constant->offset().placement(), {0.0, 0.0, 0.0}});
    return goals;
  }
  if (const auto* reference = dynamic_cast<const RkReferencePoseManipulationOffset*>(&offset)) {
    const std::string& name = reference->poseName();
    line = place.child(RkManipulation::RkNameToken).line();
    if (name.empty()) {
      m_out.error(
          m_file, line,
          what + " names no pose, so the frame cannot start; name a pose of the pose set in its <name>");
      return goals;
    }
    if (!m_poses.poses) {
      if (m_poses.required) {
        m_out.error(m_file, line,
                    what + " is the pose " + quoted(name) +
                        ", but no pose set is given, so the frame cannot start; give one with --poses");
      }
      return goals;
    }
    const RkCoordinateSystemTransformation* pose = m_poses.poses->poseMap().find(name);
    if (!pose) {
      std::string held;
      for (const auto& entry : m_poses.poses->poseMap().mapContainer())
        held += (held.empty() ? "" : ", ") + quoted(entry.first.value());
      m_out.error(m_file, line,
                  what + " is the pose " + quoted(name) + ", which the pose set " + m_poses.path +
                      " does not hold" + (held.empty() ? std::string() : " (it holds " + held + ")") +
                      ", so the frame cannot start; add it to the pose set or name one it holds");
      return goals;
    }
    goals.push_back({" at the pose " + quoted(name), pose, {0.0, 0.0, 0.0}});
  } else if (const auto* interpolated = dynamic_cast<const RkInterpolatedManipulationOffset*>(&offset)) {
    const RkReal seconds = interpolated->interpolationTime();
    if (!std::isfinite(seconds) || seconds < 0.0) {
      m_out.error(m_file, place.child(RkManipulation::RkInterpolationTimeToken).line(),
                  "the interpolationTime " + number(seconds) + " of " + what +
                      " is not a finite number at least 0, so the frame cannot start; give the seconds the "
                      "approach takes");
    }
    const RkManipulationOffset* target = interpolated->targetOffset().element();
    const Place targetPlace = place.child(RkManipulation::RkTargetOffsetToken);
    if (target)
      checkOffset(*target, targetPlace.child(target->token()), what, set, kNoEndEffector, published);
    return goals;
  } else if (const auto* linked = dynamic_cast<const RkLinkRelativeManipulationOffset*>(&offset)) {
    const std::string& name = linked->linkIdentifier();
    if (!m_robot || m_robot->system().manipulators().size() == 0) return goals;
    const RkIndividualManipulator& arm = m_robot->system().manipulators()[0];
    if (!arm.link(name)) {
      std::string links;
      for (RkU32 i = 0; i < arm.links().size(); ++i)
        links += (links.empty() ? "" : ", ") + arm.links()[i].identifier();
      m_out.error(m_file, place.child(RkManipulation::RkLinkIdentifiersToken).line(),
                  what + " is relative to the link " + quoted(name) + ", which " + m_robotName +
                      " does not have (its links: " + links +
                      "), so the frame cannot start; name one of its links in <linkIdentifiers>");
    }
    return goals;
  } else if (const auto* parametric =
                 dynamic_cast<const RkParametricTranslationManipulationOffset*>(&offset)) {
    const Place targetPlace = place.child(RkManipulation::RkTargetOffsetToken);
    const RkManipulationOffset* target = parametric->targetOffset().element();
    std::vector<Goal> targetGoals;
    if (target) {
      targetGoals =
          checkOffset(*target, targetPlace.child(target->token()), what, set, kNoEndEffector, published);
    } else if (!targetPlace.holdsUnread()) {
      m_out.error(m_file, place.line(),
                  what +
                      " moves no offset: its <targetOffset> is empty, so the frame cannot start; put the "
                      "offset whose goal it moves in it");
    }
    const std::string* tags[3] = {&parametric->parametricXTag(), &parametric->parametricYTag(),
                                  &parametric->parametricZTag()};
    const RkToken* tokens[3] = {&RkManipulation::RkParametricXTagToken,
                                &RkManipulation::RkParametricYTagToken,
                                &RkManipulation::RkParametricZTagToken};
    if (tags[0]->empty() && tags[1]->empty() && tags[2]->empty()) {
      m_out.error(m_file, place.line(),
                  what +
                      " names no parametric tag, so the frame cannot start; name the data-map value it "
                      "moves by in <parametricXTag>, <parametricYTag> or <parametricZTag>");
      return goals;
    }
    bool known = true;
    std::size_t combinations = 1;
    for (int axis = 0; axis < 3; ++axis) {
      if (tags[axis]->empty()) continue;
      const auto values = published.find(*tags[axis]);
      if (values != published.end()) {
        combinations *= std::max<std::size_t>(values->second.size(), 1);
        continue;
      }
      known = false;
      if (m_publishedAnywhere.count(*tags[axis])) continue;
      m_out.error(m_file, place.child(*tokens[axis]).line(),
                  what + " moves by the data-map value " + quoted(*tags[axis]) +
                      ", which no parametric frame of the task publishes, so the frame cannot start; name it "
                      "in the <parametricTag> of a parametric frame around this one");
    }
    // Each goal of the target, moved by each combination of the values the frames around publish.
    if (!known || combinations > 1000) return goals;
    for (const Goal& targetGoal : targetGoals) {
      std::vector<Goal> moved{targetGoal};
      for (int axis = 0; axis < 3; ++axis) {
        if (tags[axis]->empty()) continue;
        std::vector<Goal> next;
        for (const Goal& goal : moved) {
          for (RkReal value : published.at(*tags[axis])) {
            Goal shifted = goal;
            shifted.how += " with " + valueText(*tags[axis], value);
            shifted.shift[axis] += value;
            next.push_back(shifted);
          }
        }
        moved.swap(next);
      }
      goals.insert(goals.end(), moved.begin(), moved.end());
    }
  }
  if (!m_robot || endEffector == kNoEndEffector) return goals;
  for (const Goal& goal : goals) {
    const RkCoordinateSystemTransformation placement =
        *goal.base * RkCoordinateSystemTransformation(RkVector(goal.shift[0], goal.shift[1], goal.shift[2]),
                                                      RkOrientation());
    const RkVector& p = placement.translation();
    if (!std::isfinite(p.x()) || !std::isfinite(p.y()) || !std::isfinite(p.z()) ||
        reachable(set, endEffector, placement))
      continue;
    m_out.warning(m_file, line,
                  what + goal.how + " (" + number(p.x()) + " " + number(p.y()) + " " + number(p.z()) +
                      ") is out of the reach of " + m_robotName +
                      ", so the frame will end short of it; move the goal within reach");
    break;
  }
  return goals;
}

void RkTaskChecks::checkPoses(const RkPoseSet& poses, const Place& place) {
  const std::vector<Place> entries =
      place.child(RkManipulation::RkPoseMapToken).children(RkXml::RkElementToken);
  std::size_t index = 0;
  for (const auto& entry : poses.poseMap().mapContainer()) {
    const Place value = index < entries.size() ? entries[index].child(RkXml::RkValueToken) : place;
    checkTransformation(entry.second, value, "the pose " + quoted(entry.first.value()), 0, kNoEndEffector);
    ++index;
  }
}

void RkTaskChecks::checkPlacement(const RkEndEffectorPlacement& goal, const Place& place,
                                  const std::string& what, RkU32 set, RkU32 endEffector) {
  checkTransformation(goal.placement(), place.child(RkControl::RkPlacementToken), what, set, endEffector);
}

void RkTaskChecks::checkTransformation(const RkCoordinateSystemTransformation& goal,
                                       const Place& transformation, const std::string& what, RkU32 set,
                                       RkU32 endEffector) {
  const Place translation = transformation.child(RkFoundCommon::RkTranslationToken);
  const Place orientation = transformation.child(RkFoundCommon::RkOrientationToken);
  // A value the reader could not read has been reported; what stands in its place is not the task's.
  if (m_out.hasLibraryMessageAt(m_file, translation.line()) ||
      m_out.hasLibraryMessageAt(m_file, orientation.line()))
    return;
  const RkVector& p = goal.translation();
  const bool finite = std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
  if (!finite) {
    m_out.error(m_file, translation.line(),
                "the translation " + quoted(number(p.x()) + " " + number(p.y()) + " " + number(p.z())) +
                    " of " + what +
                    " is not finite, and would be sent to the arm as it is; give three finite numbers");
  }
  RkReal q[4];
  if (orientation.inSource() && RkXmlText::parseReals(orientation.sourceText(), q, 4)) {
    const RkReal length = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
    if (!(length > 0.0) || !std::isfinite(length)) {
      m_out.error(m_file, orientation.line(),
                  "the orientation of " + what + " is not a rotation; give a unit quaternion w x y z");
    } else if (std::abs(length - 1.0) > 1e-6) {
      m_out.warning(m_file, orientation.line(),
                    "the orientation " + quoted(std::string(RkXmlText::trim(orientation.sourceText()))) +
                        " of " + what + " has length " + number(length) +
                        ", not 1, and is used normalised; write the unit quaternion meant");
    }
  }
  if (finite && m_robot && endEffector != kNoEndEffector && !reachable(set, endEffector, goal)) {
    m_out.warning(m_file, translation.line(),
                  what + " (" + number(p.x()) + " " + number(p.y()) + " " + number(p.z()) +
                      ") is out of the reach of " + m_robotName +
                      ", so the frame will end short of it; move the goal within reach");
  }
}

bool RkTaskChecks::reachable(RkU32 set, RkU32 endEffector, const RkCoordinateSystemTransformation& goal) {
  const RkVector& p = goal.translation();
  const RkOrientation& q = goal.orientation();
  const std::vector<double> key{double(set), double(endEffector), p.x(), p.y(), p.z(), q.w(), q.x(), q.y(),
                                q.z()};
  const auto found = m_reachable.find(key);
  if (found != m_reachable.end()) return found->second;
  return m_reachable[key] = m_robot->system().canReach(0, set, endEffector, goal);
}
