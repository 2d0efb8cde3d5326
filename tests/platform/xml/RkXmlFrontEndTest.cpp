// The reader's front end: the parser is fed in pieces, so every token of a document must read the same
// wherever a piece ends; texts gather across the parser's pieces; names of many namespaces stay apart;
// lines are exact far into a file; and when a document has several faults, the one reported is the one a
// reader parsing 512 bytes ahead of its walk meets first.
#include <gtest/gtest.h>

#include <string>

#include "foundation/RkPrint.h"
#include "platform/xml/RkXmlReaderChecks.h"
#include "platform/xml/RkXmlTestObjects.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlWriter.h"

namespace {

const std::string kNamespace = "http://rkmanipulation.org/namespace/ct#";
const std::string kRootOpen = "<testHolder xmlns=\"" + kNamespace + "\">";
const std::string kRootClose = "</testHolder>\n";

std::string written(const RkXmlObject& object) {
  std::string document;
  RkXmlWriter::writeString(object, document);
  return document;
}

// Takes the text of the root's first child as the reader hands it over.
class RkTextProbe : public RkXmlObject {
 public:
  RkBoolean read(RkXmlReader& reader) override {
    return reader.advance() == RkXmlNodeKind::StartElement && reader.readElementText(text);
  }
  RkBoolean equality(const RkXmlObject* other) const override { return other == this; }
  RkXmlObject* newObject() const override { return new RkTextProbe; }
  RkXmlObject* clone() const override { return new RkTextProbe(*this); }
  const RkToken& token() const override { return RkTestHolderToken; }

  std::string text;
};

}  // namespace

TEST(RkXmlFrontEnd, a_document_reads_the_same_wherever_the_parsers_pieces_end) {
  // Over 16 KiB, with texts and attribute values longer than 512 bytes that need escapes.
  RkTestHolder holder = RkTestHolder::sample(40);
  std::string awkward;
  for (int i = 0; i < 60; ++i) awkward += "a & b < \"c\" " + std::to_string(i) + "\t\n";
  holder.m_title = awkward;
  RkTestOtherLeaf leaf;
  leaf.m_label = awkward;
  holder.m_others.pushBack(leaf);
  const std::string document = written(holder);
  ASSERT_GT(document.size(), 16u << 10);
  const std::size_t afterDeclaration = document.find('\n') + 1;
  // A comment of each length moves every boundary through the tokens around it.
  for (std::size_t shift = 0; shift < 700; shift += shift < 40 ? 1 : 37) {
    SCOPED_TRACE(shift);
    const std::string shifted = document.substr(0, afterDeclaration) + "<!--" + std::string(shift, 'c') +
                                "-->\n" + document.substr(afterDeclaration);
    Rk::Print::Capture capture;
    RkTestHolder read;
    ASSERT_TRUE(RkXmlReader::readString(shifted, read, "shifted.xml"));
    EXPECT_TRUE(read == holder);
    EXPECT_TRUE(capture.lines().empty()) << capture.text();
  }
}

TEST(RkXmlFrontEnd, a_text_is_gathered_from_its_pieces_up_to_the_text_cap_and_white_space_alone_is_none) {
  // Escaped characters, character references, CDATA sections and comments, 8 MiB in all, no run between
  // two '<' over the cap.
  std::string text, markup;
  while (text.size() + 32 <= RkXmlReader::kMaxTextBytes) {
    text += "x&y<z \xE2\x98\xBA";
    markup += "x&amp;y&lt;z &#x263A;";
    if (text.size() % 4096 < 32) {
      text += "<![CDATA[";
      markup += "<![CDATA[<![CDATA[]]><!-- -->";
    }
  }
  const std::string fill(RkXmlReader::kMaxTextBytes - text.size(), 'f');
  for (const bool over : {false, true}) {
    SCOPED_TRACE(over);
    Rk::Print::Capture capture;
    RkTextProbe probe;
    const RkBoolean read = RkXmlReader::readString(
        kRootOpen + "\n<title>" + markup + fill + (over ? "f" : "") + "</title>" + kRootClose, probe,
        "cap.xml");
    if (over) {
      EXPECT_FALSE(read);
      EXPECT_TRUE(refusedOnce(capture, "cap.xml", 0, "text longer than 8 MiB"));
    } else {
      ASSERT_TRUE(read) << capture.text();
      EXPECT_TRUE(probe.text == text + fill);
    }
  }
  // A text of white space only is skipped even where other text or a CDATA section follows a comment.
  const std::pair<const char*, const char*> values[] = {
      {"  <!-- c -->  x  ", "  x  "}, {" &#32; ", ""}, {" <![CDATA[ ]]> ", " "}, {"\n  <?pi?>\n", ""}};
  for (const auto& [content, value] : values) {
    SCOPED_TRACE(content);
    RkTextProbe probe;
    ASSERT_TRUE(RkXmlReader::readString(kRootOpen + "<title>" + content + "</title>" + kRootClose, probe));
    EXPECT_EQ(probe.text, value);
  }
}

TEST(RkXmlFrontEnd, names_of_hundreds_of_namespaces_stay_apart_from_the_toolkit_ones) {
  // The same local name in 300 namespaces, by default declaration and by prefix, around the one title
  // of the toolkit's namespace, each on a line of its own.
  std::string document = kRootOpen + "\n";
  for (int i = 0; i < 300; ++i) {
    const std::string uri = "urn:other" + std::to_string(i) + (i % 2 ? "#" : "");
    document += i % 3 ? "<title xmlns=\"" + uri + "\">foreign</title>\n"
                      : "<p:title xmlns:p=\"" + uri + "\">foreign</p:title>\n";
    if (i == 150) document += "<t:title xmlns:t=\"" + kNamespace + "\">ours</t:title>\n";
  }
  Rk::Print::Capture capture;
  RkTestHolder holder;
  ASSERT_TRUE(RkXmlReader::readString(document + kRootClose, holder, "names.xml"));
  EXPECT_EQ(holder.m_title.value(), "ours");
  ASSERT_EQ(capture.lines().size(), RkXmlReader::kMaxReportLines + 1);
  EXPECT_EQ(capture.lines()[0].text,
            "RkXmlReader::read error: names.xml:2: unknown element \"title\" in \"testHolder\" skipped\n");
  // The title of line 153 is the toolkit's.
  EXPECT_EQ(capture.lines()[151].text,
            "RkXmlReader::read error: names.xml:154: unknown element \"title\" in \"testHolder\" skipped\n");
  EXPECT_EQ(capture.lines()[200].text, "RkXmlReader::read: names.xml: 100 more report lines not shown\n");
}

TEST(RkXmlFrontEnd, lines_are_exact_far_into_a_file) {
  const std::string document = kRootOpen + std::string(70000, '\n') + "<stranger/>\n<leaves>\n" +
                               "<element><key>k</key><value><count>zz</count></value></element>\n" +
                               "</leaves>" + kRootClose;
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_TRUE(RkXmlReader::readString(document, holder, "long.xml"));
  ASSERT_EQ(capture.lines().size(), 2u) << capture.text();
  EXPECT_EQ(
      capture.lines()[0].text,
      "RkXmlReader::read error: long.xml:70001: unknown element \"stranger\" in \"testHolder\" skipped\n");
  EXPECT_EQ(capture.lines()[1].text,
            "RkXmlReader::read error: long.xml:70003: \"zz\" is not an unsigned integer\n");
}

TEST(RkXmlFrontEnd, of_several_faults_the_one_met_first_by_a_walk_512_bytes_behind_the_parser_is_reported) {
  const std::string sound = written(RkTestHolder::sample(30));
  ASSERT_GT(sound.size(), 20000u);
  const std::size_t body = sound.find('>', sound.find("<testHolder")) + 1;
  const std::string mismatch = "<title>x</titel>";
  const struct {
    const char* what;
    std::string document;
    bool asLeaf;  // read as another root
    int line;
    const char* reason;
  } cases[] = {
      {"a parse fault in the first piece before a wrong root",
       sound.substr(0, body) + mismatch + sound.substr(body), true, 0, "tag mismatch"},
      {"a wrong root before a parse fault pieces later",
       sound.substr(0, sound.size() - 100) + mismatch + sound.substr(sound.size() - 100), true, 2,
       "root element is \"testHolder\""},
      {"a parse fault at the end after an unknown element",
       sound.substr(0, body) + "<stranger/>" + sound.substr(body, sound.rfind(kRootClose) - body), false, 0,
       "Extra content"},
  };
  for (const auto& bad : cases) {
    SCOPED_TRACE(bad.what);
    Rk::Print::Capture capture;
    RkTestHolder holder;
    RkTestLeaf leaf;
    EXPECT_FALSE(bad.asLeaf ? RkXmlReader::readString(bad.document, leaf, "faults.xml")
                            : RkXmlReader::readString(bad.document, holder, "faults.xml"));
    EXPECT_TRUE(refusedOnce(capture, "faults.xml", bad.line, bad.reason));
  }
  // More than 10,000 names after a sound start of over 16 KiB.
  std::string names = sound.substr(0, sound.rfind(kRootClose));
  for (int i = 0; i < 12000; ++i) names += "<n" + std::to_string(i) + "/>";
  Rk::Print::Capture capture;
  RkTestHolder holder;
  EXPECT_FALSE(RkXmlReader::readString(names + kRootClose, holder, "faults.xml"));
  EXPECT_TRUE(refusedOnce(capture, "faults.xml", 0, "more than 10000 distinct names"));
}
