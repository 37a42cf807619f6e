// Entity resolver of the grammar-checked reads: whatever the document's DOCTYPE
// or its external entities name, the grammar found by the reader is used (or
// empty text when there is none), so no other file and no network is ever
// read. It remembers that it was asked, which is how the reader learns that a
// DOCTYPE exists.
#ifndef HBORESOLVER_H
#define HBORESOLVER_H

#include <string>

#include <xercesc/sax/EntityResolver.hpp>
#include <xercesc/sax/InputSource.hpp>

class HBOResolver : public xercesc::EntityResolver {
public:
    explicit HBOResolver(const std::string& path);
    ~HBOResolver() override;

    // Ignores both ids; empty text without a grammar path, null when the
    // grammar file cannot be opened as a source.
    xercesc::InputSource* resolveEntity(const XMLCh* const publicId, const XMLCh* const systemId) override;

    bool wasAsked() const { return m_asked; }
    const std::string& getPath() const { return m_path; }

private:
    std::string m_path;
    bool m_asked = false;
};

#endif
