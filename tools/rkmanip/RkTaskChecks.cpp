#include "tools/rkmanip/RkTaskChecks.h"

#include <cmath>
#include <set>

#include "control/RkControlTokens.h"
#include "events/RkManipulationTimeDurationTransitionEvent.h"
#include "frames/RkStandardManipulationFrame.h"
#include "frames/RkStandardManipulationFrameState.h"
#include "offsets/RkConstantManipulationOffset.h"
#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationSequenceManager.h"
#include "sequencing/RkManipulationTokens.h"
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

// "frame "above" of sequence "pick"", or "frame 2 of ..." for a frame without a tag.
std::string frameName(const RkStandardManipulationFrame& frame, RkU32 index, const std::string& sequence) {
  const std::string& tag = frame.tag().value();
  std::string text = tag.empty() ? "frame " + std::to_string(index + 1) : "frame " + quoted(tag);
  return sequence.empty() ? text : text + " of sequence " + quoted(sequence);
}

const RkStandardManipulationFrameState& anyState() {
  static const RkStandardManipulationFrameState state;
  return state;
}

}  // namespace

RkTaskChecks::RkTaskChecks(const std::string& file, const RkSimulatedTaskRunner* robot,
                           const std::string& robotName, RkDiagnostics& out)
    : m_file(file), m_robot(robot), m_robotName(robotName), m_out(out) {}

bool RkTaskChecks::needsRobot(const RkXmlObject& object) {
  return dynamic_cast<const RkManipulationSequenceManager*>(&object) ||
         dynamic_cast<const RkManipulationActionContainer*>(&object) ||
         dynamic_cast<const RkManipulationSequence*>(&object) ||
         dynamic_cast<const RkStandardManipulationFrame*>(&object) ||
         dynamic_cast<const RkConstantManipulationOffset*>(&object);
}

void RkTaskChecks::check(const RkXmlObject& object, const Place& place) {
  if (const auto* manager = dynamic_cast<const RkManipulationSequenceManager*>(&object)) {
    checkManager(*manager, place);
  } else if (const auto* container = dynamic_cast<const RkManipulationActionContainer*>(&object)) {
    if (container->element()) check(*container->element(), place.child(container->element()->token()));
  } else if (const auto* sequence = dynamic_cast<const RkManipulationSequence*>(&object)) {
    checkSequence(*sequence, place, "");
  } else if (const auto* frame = dynamic_cast<const RkStandardManipulationFrame*>(&object)) {
    checkFrame(*frame, place, frameName(*frame, 0, ""));
  } else if (const auto* offset = dynamic_cast<const RkConstantManipulationOffset*>(&object)) {
    checkPlacement(offset->offset(), place.child(RkManipulation::RkManipulationOffsetToken), "the offset",
                   m_robot ? m_robot->setUp().activeEndEffectorSet() : 0, 0);
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
    checkSequence(entry.second, value, entry.first.value());
    ++index;
  }
}

void RkTaskChecks::checkSequence(const RkManipulationSequence& sequence, const Place& place,
                                 const std::string& name) {
  const Place frames = place.child(RkManipulation::RkManipulationFrameContainerVectorToken);
  const auto& containers = sequence.manipulationFrameContainerVector();
  const std::string what = name.empty() ? "the sequence" : "sequence " + quoted(name);
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
    if (const auto* standard = dynamic_cast<const RkStandardManipulationFrame*>(frame))
      checkFrame(*standard, entry.child(frame->token()), frameName(*standard, i, name));
  }
}

void RkTaskChecks::checkFrame(const RkStandardManipulationFrame& frame, const Place& place,
                              const std::string& what) {
  checkEvent(frame, place, what);
  checkOffsets(frame, place, what);
}

void RkTaskChecks::checkEvent(const RkStandardManipulationFrame& frame, const Place& place,
                              const std::string& what) {
  const Place container = place.child(RkManipulation::RkManipulationFrameTransitionEventContainerToken);
  const RkManipulationFrameTransitionEvent* event = frame.transitionEventContainer(anyState()).element();
  if (!event) {
    if (!container.holdsUnread()) {
      m_out.error(m_file, place.line(),
                  what +
                      " has no transition event, so it can never end; add a "
                      "<manipulationFrameTransitionEventContainer> holding a <timeDurationTransitionEvent>");
    }
    return;
  }
  const auto* timed = dynamic_cast<const RkManipulationTimeDurationTransitionEvent*>(event);
  if (!timed) return;
  const Place eventPlace = container.child(event->token());
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
                                const std::string& what) {
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
    } else if (const auto* constant = dynamic_cast<const RkConstantManipulationOffset*>(offset)) {
      const Place goal = entry.child(offset->token()).child(RkManipulation::RkManipulationOffsetToken);
      checkPlacement(constant->offset(), goal,
                     "the goal of end effector " + std::to_string(i) + " in " + what, set,
                     i < endEffectors ? i : 0xFFFFFFFFu);
    }
  }
}

void RkTaskChecks::checkPlacement(const RkEndEffectorPlacement& goal, const Place& place,
                                  const std::string& what, RkU32 set, RkU32 endEffector) {
  const Place transformation = place.child(RkControl::RkPlacementToken);
  const Place translation = transformation.child(RkFoundCommon::RkTranslationToken);
  const Place orientation = transformation.child(RkFoundCommon::RkOrientationToken);
  // A value the reader could not read has been reported; what stands in its place is not the task's.
  if (m_out.hasLibraryMessageAt(m_file, translation.line()) ||
      m_out.hasLibraryMessageAt(m_file, orientation.line()))
    return;
  const RkVector& p = goal.placement().translation();
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
  if (finite && m_robot && endEffector != 0xFFFFFFFFu && !reachable(set, endEffector, goal.placement())) {
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
