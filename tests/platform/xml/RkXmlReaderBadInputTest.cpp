// Hostile and broken documents: each is refused with exactly one line naming the file, the line and the
// reason, nothing crashes, and nothing from outside the document reaches a value. Also the lenient reads
// that must not fail a document.
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <stdlib.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlReaderChecks.h"
#include "platform/xml/RkXmlTestObjects.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace {

const std::string kNamespace = "http://rkmanipulation.org/namespace/ct#";
const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
const std::string kRootOpen = "<testHolder xmlns=\"" + kNamespace + "\">";
const std::string kRootClose = "</testHolder>\n";

// What libxml2 itself, with no limits of ours, makes of the bytes.
bool wellFormed(const std::string& document) {
  xmlDocPtr parsed = xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                                   XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  xmlFreeDoc(parsed);
  return parsed != nullptr;
}

std::string writtenSample(RkU32 entries) {
  std::string document;
  RkXmlWriter::writeString(RkTestHolder::sample(entries), document);
  return document;
}

std::string billionLaughs(const std::string& prolog) {
  std::string document = prolog + "<!DOCTYPE testHolder [\n  <!ENTITY lol0 \"lol\">\n";
  for (int level = 1; level <= 9; ++level) {
    document += "  <!ENTITY lol" + std::to_string(level) + " \"";
    for (int k = 0; k < 10; ++k) document += "&lol" + std::to_string(level - 1) + ";";
    document += "\">\n";
  }
  return document + "]>\n" + kRootOpen + "<title>&lol9;</title>" + kRootClose;
}

// The same characters in UTF-16 (little endian, with its byte order mark): the bytes no longer spell
// "<!DOCTYPE", so only the parser itself can stop what follows.
std::string utf16(const std::string& ascii) {
  std::string out = "\xFF\xFE";
  for (char c : ascii) {
    out += c;
    out += '\0';
  }
  return out;
}

// Elements a, one a line, depth deep: within a root opened on line 2, depth d stands on line 2 + d.
std::string nested(int depth) {
  std::string elements;
  for (int i = 0; i < depth; ++i) elements += "<a>\n";
  for (int i = 0; i < depth; ++i) elements += "</a>";
  return elements;
}

}  // namespace

TEST(RkXmlReaderBadInput, entity_expansion_is_refused_before_anything_is_expanded) {
  const struct {
    const char* what;
    std::string document;
    int line;
    const char* reason;
  } cases[] = {
      {"with a declaration", billionLaughs(kDeclaration), 2, "document type"},
      {"after a byte order mark and a comment", billionLaughs("\xEF\xBB\xBF<!-- lol -->\n"), 2,
       "document type"},
      {"in UTF-16", utf16(billionLaughs("")), 0, ""},
      {"in an attribute, in UTF-16",
       utf16("<!DOCTYPE testHolder [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
             "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;\">]>\n" +
             kRootOpen + "<others count=\"1\"><element label=\"&d;&d;&d;&d;&d;&d;&d;&d;\"/></others>" +
             kRootClose),
       0, ""},
      {"an undeclared entity", kRootOpen + "<title>&lol9;</title>" + kRootClose, 1, ""},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(bad.what);
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readString(bad.document, holder, "laughs.xml"));
    EXPECT_TRUE(refusedOnce(capture, "laughs.xml", bad.line, bad.reason));
    EXPECT_EQ(holder.m_title.value().find("lol"), std::string::npos);
  }
}

TEST(RkXmlReaderBadInput, external_entities_and_inclusions_never_bring_a_file_into_a_value) {
  TemporaryDirectory directory;
  const std::string secret = "rk-secret-3f9c1e";
  const std::string secretPath = directory.file("secret.txt", secret + "\n");
  std::string passwdLine;
  std::getline(std::ifstream("/etc/passwd"), passwdLine);

  const std::vector<std::pair<std::string, std::string>> targets = {
      {secretPath, secret}, {"file://" + secretPath, secret}, {"/etc/passwd", passwdLine}};
  for (const auto& [target, content] : targets) {
    const std::string refused[] = {
        kDeclaration + "<!DOCTYPE testHolder [<!ENTITY x SYSTEM \"" + target + "\">]>\n" + kRootOpen +
            "<title>&x;</title><names count=\"1\"><group>&x;</group></names>" + kRootClose,
        kDeclaration + "<!DOCTYPE testHolder [<!ENTITY % p SYSTEM \"" + target + "\"> %p;]>\n" + kRootOpen +
            kRootClose,
        kDeclaration + "<!DOCTYPE testHolder SYSTEM \"" + target + "\">\n" + kRootOpen + kRootClose,
        utf16("<!DOCTYPE testHolder [<!ENTITY x SYSTEM \"" + target + "\">]>\n" + kRootOpen +
              "<title>&x;</title>" + kRootClose),
    };
    const std::string lenient[] = {
        "<testHolder xmlns=\"" + kNamespace + "\" xmlns:xi=\"http://www.w3.org/2001/XInclude\">" +
            "<xi:include href=\"" + target + "\" parse=\"text\"/><title><xi:include href=\"" + target +
            "\" parse=\"text\"/></title>" + kRootClose,
    };
    std::vector<std::pair<std::string, bool>> documents;
    for (const std::string& document : refused) documents.emplace_back(document, true);
    for (const std::string& document : lenient) documents.emplace_back(document, false);
    for (const auto& [document, mustRefuse] : documents) {
      SCOPED_TRACE(document.substr(0, 160));
      Rk::Print::Capture capture;
      RkTestHolder holder;
      const RkBoolean read = RkXmlReader::readString(document, holder, "entity.xml");
      if (mustRefuse) {
        EXPECT_FALSE(read);
        EXPECT_TRUE(refusedOnce(capture, "entity.xml"));
      }
      std::string written;
      RkXmlWriter::writeString(holder, written);
      ASSERT_FALSE(content.empty());
      EXPECT_EQ(written.find(content), std::string::npos) << written;
      EXPECT_EQ(capture.text().find(content), std::string::npos) << capture.text();
    }
  }
}

TEST(RkXmlReaderBadInput, nesting_deeper_than_128_levels_is_refused_with_one_line_and_128_levels_read) {
  // The root is level 1 on line 2; the element at level 129 stands on line 130.
  const std::string documents[] = {
      kDeclaration + kRootOpen + "\n" + nested(5000) + kRootClose,
      kDeclaration + kRootOpen + "\n" + nested(128) + kRootClose,
      kDeclaration + kRootOpen + "\n<title>\n" + nested(4999) + "</title>" + kRootClose,
      kDeclaration + kRootOpen + "\n<nested count=\"1\">\n" + nested(4999) + "</nested>" + kRootClose,
  };
  for (const std::string& document : documents) {
    SCOPED_TRACE(document.substr(0, 120));
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readString(document, holder, "deep.xml"));
    EXPECT_TRUE(refusedOnce(capture, "deep.xml", 130, "deeper than 128 levels"));
  }
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_TRUE(RkXmlReader::readString(kDeclaration + kRootOpen + "\n" + nested(127) + kRootClose, holder));
  EXPECT_EQ(capture.text(),
            "RkXmlReader::read error: (string):3: unknown element \"a\" in \"testHolder\" skipped\n");
}

TEST(RkXmlReaderBadInput, a_60_MB_text_node_is_refused_from_memory_and_from_a_file) {
  const std::string document =
      kDeclaration + kRootOpen + "\n<title>" + std::string(60u << 20, 'x') + "</title>" + kRootClose;
  {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readString(document, holder, "huge.xml"));
    EXPECT_TRUE(refusedOnce(capture, "huge.xml", 3, "8 MiB"));
    EXPECT_TRUE(holder.m_title.value().empty());
  }
  TemporaryDirectory directory;
  const std::string path = directory.file("huge.xml", document);
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_FALSE(RkXmlReader::readFile(path, holder));
  EXPECT_TRUE(refusedOnce(capture, path, 3, "8 MiB"));
  EXPECT_TRUE(holder.m_title.value().empty());
}

TEST(RkXmlReaderBadInput, a_value_assembled_from_pieces_is_held_to_the_same_text_cap) {
  // No single run between two '<' is long, yet the value read would be 60 MB or 9 MB.
  std::string commented = kDeclaration + kRootOpen + "\n<title>";
  while (commented.size() < (60u << 20)) commented += std::string(1u << 20, 'y') + "<!---->";
  commented += "</title>" + kRootClose;
  std::string cdata = kDeclaration + kRootOpen + "\n<title><![CDATA[";
  while (cdata.size() < 9000000) cdata += std::string(1000000, 'c') + "<";
  cdata += "]]></title>" + kRootClose;
  for (const std::string* document : {&commented, &cdata}) {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readString(*document, holder, "pieces.xml"));
    EXPECT_TRUE(refusedOnce(capture, "pieces.xml"));
    EXPECT_LE(holder.m_title.value().size(), RkXmlReader::kMaxTextBytes);
  }
}

TEST(RkXmlReaderBadInput, a_truncated_document_is_refused_wherever_it_is_cut) {
  const std::string document = writtenSample(2);
  const std::size_t rootEnd = document.rfind(kRootClose);
  ASSERT_NE(rootEnd, std::string::npos);
  {
    TemporaryDirectory directory;
    const std::string path = directory.file("half.xml", document.substr(0, document.size() / 2));
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readFile(path, holder));
    EXPECT_TRUE(refusedOnce(capture, path));
  }
  for (std::size_t cut = 0; cut < rootEnd + kRootClose.size() - 1; ++cut) {
    Rk::Print::Capture capture;
    RkTestHolder holder;
    const RkBoolean read =
        RkXmlReader::readString(std::string_view(document).substr(0, cut), holder, "cut.xml");
    EXPECT_FALSE(read) << "cut at " << cut;
    const auto refused = refusedOnce(capture, "cut.xml");
    EXPECT_TRUE(refused) << "cut at " << cut;
    if (read || !refused) break;
  }
}

TEST(RkXmlReaderBadInput, random_bytes_never_crash_and_a_refusal_prints_one_line) {
  std::mt19937 random(20240611u);
  const std::string prefixes[] = {"", kDeclaration + kRootOpen, kRootOpen + "<nested count=\"3\"><element>"};
  for (int i = 0; i < 300; ++i) {
    std::string document = prefixes[i % 3];
    const std::size_t length = random() % 400;
    for (std::size_t k = 0; k < length; ++k) document += static_cast<char>(random());
    Rk::Print::Capture capture;
    RkTestHolder holder;
    if (!RkXmlReader::readString(document, holder, "random.xml")) {
      EXPECT_TRUE(refusedOnce(capture, "random.xml")) << "case " << i;
    }
  }
}

TEST(RkXmlReaderBadInput, a_mangled_document_that_is_not_well_formed_prints_only_its_refusal) {
  // Random edits to a valid document. Those that leave it well-formed may be read, or fail on a value,
  // with lines about the content; those that break it must print the refusal and no line about content
  // read before the fault.
  const std::string document = writtenSample(3);
  std::mt19937 random(77u);
  int malformed = 0;
  for (int i = 0; i < 300; ++i) {
    std::string mangled = document;
    for (int edits = 1 + random() % 4; edits > 0; --edits) {
      const std::size_t at = random() % mangled.size();
      switch (random() % 3) {
        case 0:
          mangled[at] = static_cast<char>(random());
          break;
        case 1:
          mangled.erase(at, 1 + random() % 8);
          break;
        default:
          mangled.insert(at, 1, "<>/&\"= ax"[random() % 9]);
      }
    }
    Rk::Print::Capture capture;
    RkTestHolder holder;
    const RkBoolean read = RkXmlReader::readString(mangled, holder, "mangled.xml");
    if (!wellFormed(mangled)) {
      ++malformed;
      EXPECT_FALSE(read) << "case " << i;
      EXPECT_TRUE(refusedOnce(capture, "mangled.xml")) << "case " << i << ":\n" << mangled;
    }
  }
  EXPECT_GT(malformed, 100);
}

TEST(RkXmlReaderBadInput, a_wrong_root_or_trailing_garbage_is_refused_but_a_trailing_comment_is_not) {
  const std::string document = writtenSample(1);
  const int lastLine = static_cast<int>(std::count(document.begin(), document.end(), '\n')) + 1;
  const struct {
    const char* what;
    std::string document;
    int line;
    const char* reason;
  } cases[] = {
      {"a root of another name", kDeclaration + "<testLeaf xmlns=\"" + kNamespace + "\"/>\n", 2,
       "root element is \"testLeaf\", expected \"testHolder\""},
      {"text after the root", document + "garbage", lastLine, ""},
      {"an element after the root", document + "<title/>", lastLine, ""},
      {"a second root", document + document.substr(kDeclaration.size()), lastLine, ""},
      {"a lone '<'", document + "<", lastLine, ""},
      {"nothing", "", 1, ""},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(bad.what);
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readString(bad.document, holder, "root.xml"));
    EXPECT_TRUE(refusedOnce(capture, "root.xml", bad.line, bad.reason));
  }
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_TRUE(RkXmlReader::readString(document + "<!-- done -->\n<?later ?>\n\n", holder, "root.xml"));
  EXPECT_TRUE(capture.lines().empty()) << capture.text();
  EXPECT_EQ(holder, RkTestHolder::sample(1));
}

TEST(RkXmlReaderBadInput, elements_of_another_namespace_are_never_taken_for_the_toolkit_ones) {
  const struct {
    const char* what;
    std::string document;
    const char* reason;
  } refused[] = {
      {"no namespace", "<testHolder/>", "\"testHolder\" in namespace \"\""},
      {"a namespace ending in '#'", "<testHolder xmlns=\"urn:other#\"/>",
       "\"testHolder\" in namespace \"urn:other#\""},
      {"a namespace not ending in '#'", "<testHolder xmlns=\"urn:other\"/>",
       "root element is \"testHolder\""},
      // The namespace and the local name joined spell the toolkit's name for the root.
      {"a namespace that runs into the name", "<tHolder xmlns=\"" + kNamespace + "tes\"/>",
       "root element is \"tHolder\""},
  };
  for (const auto& bad : refused) {
    SCOPED_TRACE(bad.what);
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_FALSE(RkXmlReader::readString(bad.document, holder, "namespace.xml"));
    EXPECT_TRUE(refusedOnce(capture, "namespace.xml", 1, bad.reason));
  }
  // Children of another namespace are unknown children: skipped, and named by their own name.
  const std::pair<std::string, const char*> children[] = {
      {"<title xmlns=\"urn:other#\">foreign</title>", "title"},
      {"<x:title xmlns:x=\"urn:other\">foreign</x:title>", "title"},
      {"<tle xmlns=\"" + kNamespace + "ti\">foreign</tle>", "tle"},
  };
  for (const auto& [child, name] : children) {
    SCOPED_TRACE(child);
    Rk::Print::Capture capture;
    RkTestHolder holder;
    EXPECT_TRUE(RkXmlReader::readString(kRootOpen + child + kRootClose, holder, "namespace.xml"));
    EXPECT_EQ(holder.m_title.value(), "");
    EXPECT_EQ(capture.text(), "RkXmlReader::read error: namespace.xml:1: unknown element \"" +
                                  std::string(name) + "\" in \"testHolder\" skipped\n");
  }
}

TEST(RkXmlReaderBadInput, an_unknown_child_is_skipped_whole_with_one_line_and_reading_goes_on) {
  const std::string document = kDeclaration + kRootOpen +
                               "\n"
                               "  <title>before</title>\n"
                               "  <colour>\n"
                               "    <title>inside</title>\n"
                               "    <names count=\"1\"><group>hidden</group></names>\n"
                               "  </colour>\n"
                               "  <names count=\"1\"><group>after</group></names>\n"
                               "  <leaves>\n"
                               "    <element><key>k</key><value>\n"
                               "      <length>1.5</length>\n"
                               "      <shade/>\n"
                               "      <count>3</count>\n"
                               "    </value></element>\n"
                               "  </leaves>\n" +
                               kRootClose;
  Rk::Print::Capture capture;
  RkTestHolder holder;
  ASSERT_TRUE(RkXmlReader::readString(document, holder, "lenient.xml"));
  ASSERT_EQ(capture.lines().size(), 2u) << capture.text();
  EXPECT_EQ(capture.lines()[0].level, 4);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlReader::read error: lenient.xml:4: unknown element \"colour\" in \"testHolder\" skipped\n");
  EXPECT_EQ(capture.lines()[1].level, 4);
  EXPECT_EQ(capture.lines()[1].text,
            "RkXmlReader::read error: lenient.xml:12: unknown element \"shade\" in \"testLeaf\" skipped\n");
  EXPECT_EQ(holder.m_title.value(), "before");
  ASSERT_EQ(holder.m_names.size(), 1u);
  EXPECT_EQ(holder.m_names[0].value(), "after");
  const RkTestLeaf* leaf = holder.m_leaves.find("k");
  ASSERT_NE(leaf, nullptr);
  EXPECT_EQ(*leaf, RkTestLeaf(1.5, "", 3));
}
