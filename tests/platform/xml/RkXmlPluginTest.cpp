// Plug-in libraries named by a document: loaded only by bare name, only from a directory of
// RK_PLUGIN_PATH, and only when the library and its directory belong to root or the running user and no
// one else may change them. The test plug-in, once loaded,
// adds RkTestTriangle to the family of RkTestShapeContainer.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlTestObjects.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

#if !defined(RK_TEST_PLUGIN_DIR) || !defined(RK_TEST_PLUGIN_NAME)
#error "RK_TEST_PLUGIN_DIR and RK_TEST_PLUGIN_NAME must name the RkTestPlugin library (see xml/plugin)"
#endif

namespace {

const std::string kPluginDirectory = RK_TEST_PLUGIN_DIR;
const std::string kPluginName = RK_TEST_PLUGIN_NAME;
const std::string kOpen = "<testShapeContainer xmlns=\"http://rkmanipulation.org/namespace/ct#\">";
const std::string kClose = "\n</testShapeContainer>\n";
const std::string kTriangle =
    "\n  <testTriangle>\n    <base>2</base>\n    <height>0.5</height>\n  </testTriangle>";

std::string naming(const std::string& library, const std::string& content = "") {
  return kOpen + "\n  <addLibraries count=\"1\">\n    <group>" + library + "</group>\n  </addLibraries>" +
         content + kClose;
}

// Sets RK_PLUGIN_PATH, or unsets it, for the scope.
class PluginPath {
 public:
  explicit PluginPath(const char* value) {
    if (const char* previous = std::getenv("RK_PLUGIN_PATH")) m_previous = previous;
    value ? setenv("RK_PLUGIN_PATH", value, 1) : unsetenv("RK_PLUGIN_PATH");
  }
  ~PluginPath() {
    m_previous ? setenv("RK_PLUGIN_PATH", m_previous->c_str(), 1) : unsetenv("RK_PLUGIN_PATH");
  }

 private:
  std::optional<std::string> m_previous;
};

// Whether a container takes a triangle: only once the plug-in is loaded.
bool triangleReadable() {
  Rk::Print::Capture quiet;
  RkTestShapeContainer container;
  return RkXmlReader::readString(kOpen + kTriangle + kClose, container) && container.element() &&
         container.element()->token().localName() == "testTriangle";
}

// Reads a document naming library and expects exactly one level-4 line, containing reason.
void expectRefused(const std::string& library, const std::string& reason) {
  SCOPED_TRACE(library);
  Rk::Print::Capture capture;
  RkTestShapeContainer container;
  RkXmlReader::readString(naming(library), container, "plugin.xml");
  ASSERT_EQ(capture.lines().size(), 1u) << capture.text();
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_NE(capture.lines()[0].text.find(reason), std::string::npos) << capture.text();
  EXPECT_FALSE(triangleReadable());
}

}  // namespace

// One test, in order: a library cannot be unloaded, so every refusal is checked before the load.
TEST(RkXmlPlugin,
     a_library_loads_only_by_bare_name_from_the_plugin_path_and_only_if_others_cannot_change_it) {
  ASSERT_FALSE(triangleReadable());
  std::string pluginPath = kPluginDirectory + "/" + kPluginName;
  // A build under a permissive umask leaves the library group-writable, which would rightly be refused.
  struct stat status;
  ASSERT_EQ(stat(pluginPath.c_str(), &status), 0) << pluginPath;
  if (status.st_mode & (S_IWGRP | S_IWOTH)) {
    ASSERT_EQ(chmod(pluginPath.c_str(), status.st_mode & 0755), 0);
  }

  {
    PluginPath unset(nullptr);
    expectRefused(kPluginName, "RK_PLUGIN_PATH is not set");
    expectRefused(kPluginName, kPluginName);
  }
  {
    PluginPath set(kPluginDirectory.c_str());
    for (const std::string& name :
         {pluginPath, "./" + kPluginName, "../plugins/" + kPluginName, std::string("..")}) {
      expectRefused(name, "is not a bare library name");
    }
  }

  std::string copies = (std::filesystem::temp_directory_path() / "rkXmlPluginXXXXXX").string();
  ASSERT_NE(mkdtemp(copies.data()), nullptr);
  const std::string copy = copies + "/" + kPluginName;
  std::filesystem::copy_file(pluginPath, copy);
  {
    PluginPath set(copies.c_str());
    for (const mode_t mode : {0775, 0757, 0666}) {
      SCOPED_TRACE(mode);
      ASSERT_EQ(chmod(copy.c_str(), mode), 0);
      expectRefused(kPluginName, "group- or world-writable");
    }
    // A link in a plug-in directory to a library elsewhere.
    std::filesystem::remove(copy);
    std::filesystem::create_symlink(pluginPath, copy);
    expectRefused(kPluginName, "resolves outside");
  }
  {
    // The directory the library stands in must be as safe as the library: no one else may write to it.
    PluginPath set(copies.c_str());
    std::filesystem::remove(copy);
    std::filesystem::copy_file(pluginPath, copy);
    ASSERT_EQ(chmod(copy.c_str(), 0755), 0);
    for (const mode_t mode : {01777, 0777, 0770}) {
      SCOPED_TRACE(mode);
      ASSERT_EQ(chmod(copies.c_str(), mode), 0);
      expectRefused(kPluginName, "is group- or world-writable; \"" + kPluginName + "\" not loaded");
    }
    ASSERT_EQ(chmod(copies.c_str(), 0700), 0);
    // Owned by another user, the library or its directory: only root can hand them over.
    if (geteuid() == 0) {
      for (const std::string& path : {copy, copies}) {
        SCOPED_TRACE(path);
        ASSERT_EQ(chown(path.c_str(), 65534, 65534), 0);
        expectRefused(kPluginName, "owned by neither root nor the running user");
        ASSERT_EQ(chown(path.c_str(), 0, 0), 0);
      }
    } else {
      std::printf("  (not root: the other-owner cases are not run)\n");
    }
  }
  {
    PluginPath set((copies + "/missing:" + copies).c_str());
    std::filesystem::remove(copy);
    expectRefused(kPluginName, "is in no directory of RK_PLUGIN_PATH");
    // A name read from the document is quoted with its control characters escaped.
    expectRefused("\"lib\\nforged.so\"", "\"lib\\nforged.so\" is in no directory");
  }
  std::filesystem::remove_all(copies);

  PluginPath set(("/nonexistent:" + kPluginDirectory).c_str());
  Rk::Print::Capture capture;
  RkTestShapeContainer container;
  const std::string document = naming(kPluginName, kTriangle);
  ASSERT_TRUE(RkXmlReader::readString(document, container, "plugin.xml")) << capture.text();
  EXPECT_TRUE(capture.lines().empty()) << capture.text();
  ASSERT_NE(container.element(), nullptr);
  EXPECT_EQ(container.element()->token().localName(), "testTriangle");
  EXPECT_TRUE(triangleReadable());
  // The triangle and the library list both survive a round trip.
  std::string written;
  RkXmlWriter::writeString(container, written);
  RkTestShapeContainer again;
  ASSERT_TRUE(RkXmlReader::readString(written, again, "again.xml"));
  EXPECT_TRUE(again == container) << written;
  EXPECT_NE(written.find("<base>2</base>"), std::string::npos) << written;
  EXPECT_TRUE(capture.lines().empty()) << capture.text();
}
