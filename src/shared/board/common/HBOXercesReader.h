// The one set-up of the validating XML parser that every grammar-checked read
// goes through: no network, no file but the caller's document and our own
// grammars, the bounds of HXMLWLimits, and grammars loaded once per process.
#ifndef HBOXERCESREADER_H
#define HBOXERCESREADER_H

#include <memory>
#include <mutex>
#include <string>

#include <xercesc/sax/EntityResolver.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>

class HBOXercesReader {
public:
    // Takes the process-wide parser lock for its lifetime: the grammar pool is
    // shared, and the parser library does not guard it against threads.
    HBOXercesReader();
    ~HBOXercesReader();
    HBOXercesReader(const HBOXercesReader&) = delete;
    HBOXercesReader& operator=(const HBOXercesReader&) = delete;

    // Makes the DTD at `path` the cached grammar of this reader, reading it
    // only the first time that this process asks for that path. False when it
    // cannot be loaded.
    bool useGrammar(const std::string& path);

    // `resolver` answers every external entity and DOCTYPE; it must never hand
    // out anything but our own grammars. Both must outlive the parse.
    void setHandlers(xercesc::EntityResolver* resolver, xercesc::ErrorHandler* errors);
    void setValidation(bool on);

    // Parses `file` (packed files as their unpacked text). Throws HEXError
    // "@49-900@%s%s" for a file that may not be read and "@49-901@%s%s" for a
    // document that breaks a bound; the parser's own exceptions pass through.
    void parse(const std::string& file);

    // Times a grammar file was read into the pool in this process.
    static unsigned grammarLoads();

private:
    std::unique_lock<std::mutex> m_lock;
    std::unique_ptr<xercesc::SAX2XMLReader> m_reader;
    xercesc::ErrorHandler* m_errors = nullptr;
};

#endif
