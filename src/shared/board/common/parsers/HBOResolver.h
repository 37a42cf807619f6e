// Entity resolver of the validating read: whatever the document's DOCTYPE
// names, the grammar found by the reader is used, and the resolver remembers
// that it was asked, which is how the reader learns that a DOCTYPE exists.
#ifndef HBORESOLVER_H
#define HBORESOLVER_H

#include <string>

#include <xercesc/sax/EntityResolver.hpp>
#include <xercesc/sax/InputSource.hpp>

class HBOResolver : public xercesc::EntityResolver {
public:
    explicit HBOResolver(const std::string& path);
    ~HBOResolver() override;

    // Ignores both ids; null when the grammar file cannot be opened as a source.
    xercesc::InputSource* resolveEntity(const XMLCh* const publicId, const XMLCh* const systemId) override;

    bool wasAsked() const { return m_asked; }
    const std::string& getPath() const { return m_path; }

private:
    std::string m_path;
    bool m_asked = false;
};

#endif
