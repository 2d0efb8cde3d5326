#pragma once
// libxml2's SAX2 parser alone over a document, building nothing and counting elements: the whole buffer
// at once (the least any reader on libxml2 can cost), or in pieces of a given size to its push parser.
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <string_view>

namespace RkBareSax2 {

inline void countElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**,
                         int, int, const xmlChar**) {
  ++*static_cast<long*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

inline void ignoreText(void*, const xmlChar*, int) {}

inline xmlSAXHandler handler() {
  xmlSAXHandler made{};
  made.initialized = XML_SAX2_MAGIC;
  made.startElementNs = &countElement;
  made.characters = &ignoreText;
  made.ignorableWhitespace = &ignoreText;
  return made;
}

// The elements of document, or -1 when libxml2 refuses it.
inline long pass(std::string_view document) {
  static xmlSAXHandler counting = handler();
  long elements = 0;
  xmlParserCtxtPtr context = xmlCreateMemoryParserCtxt(document.data(), static_cast<int>(document.size()));
  xmlFree(context->sax);
  context->sax = &counting;
  context->_private = &elements;
  xmlCtxtUseOptions(context, XML_PARSE_NONET);
  xmlParseDocument(context);
  const bool wellFormed = context->wellFormed;
  context->sax = nullptr;
  xmlFreeParserCtxt(context);
  return wellFormed ? elements : -1;
}

// The same through the push parser, handed the first four bytes and then pieces of piece bytes.
inline long pushPass(std::string_view document, std::size_t piece) {
  xmlSAXHandler counting = handler();
  long elements = 0;
  xmlParserCtxtPtr context = xmlCreatePushParserCtxt(&counting, nullptr, document.data(), 4, nullptr);
  context->_private = &elements;
  xmlCtxtUseOptions(context, XML_PARSE_NONET);
  for (std::size_t at = 4; at < document.size(); at += piece) {
    xmlParseChunk(context, document.data() + at, static_cast<int>(std::min(piece, document.size() - at)), 0);
  }
  xmlParseChunk(context, nullptr, 0, 1);
  const bool wellFormed = context->wellFormed;
  xmlFreeParserCtxt(context);
  return wellFormed ? elements : -1;
}

}  // namespace RkBareSax2
