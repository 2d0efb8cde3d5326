#include "frames/RkManipulationFrame.h"

#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrame::registerComponents() {
  registerComponent(RkManipulation::RkTagToken, &m_tag,
                    "the frame's name, shown in messages and run reports");
}
