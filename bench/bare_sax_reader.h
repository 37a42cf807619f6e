// The floor both benchmarks measure against: the XML parser alone, with the
// features the board reader's loader uses (no validation, no namespaces, no
// external grammar) and nothing done with the events.
#ifndef ZR_BENCH_BARE_SAX_READER_H
#define ZR_BENCH_BARE_SAX_READER_H

#include <memory>

#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/XMLUni.hpp>

inline std::unique_ptr<xercesc::SAX2XMLReader> makeBareSaxReader(xercesc::DefaultHandler& handler) {
    std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader());
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
    reader->setFeature(xercesc::XMLUni::fgXercesSchema, false);
    reader->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
    reader->setContentHandler(&handler);
    reader->setErrorHandler(&handler);
    return reader;
}

#endif
