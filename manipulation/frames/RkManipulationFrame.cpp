#include "frames/RkManipulationFrame.h"

#include "sequencing/RkManipulationTokens.h"

void RkManipulationFrame::registerComponents() {
  registerComponent(RkManipulation::RkTagToken, &m_tag);
}
