// Events of the host's user interface as the library sees them: a base with
// a code, and native events that carry one value of any type.
//
// Codes in our host layer:
//   589  the user's board repository list changed (a new `board.repoPaths`)
//   590  the repository list of the open project changed
//   591  the files below a board repository changed on disk
// The board catalogue listens to these three and refreshes its user boards
// when the event's predicate (`isApplicable`) holds. Nothing in this host
// layer sends them by itself; the embedding program, the scripting layers and
// tests do. The catalogue's own notices use kCatalogModifyPre/Post.
#ifndef ZR_COMMON_HUTGUIEVENT_H
#define ZR_COMMON_HUTGUIEVENT_H

#include <string>

#include <boost/any.hpp>

class HUTGuiEvent {
public:
    enum Code {
        kUserRepositoriesChanged = 589,
        kProjectRepositoriesChanged = 590,
        kRepositoryFilesChanged = 591,
        kCatalogModifyPre = 592,
        kCatalogModifyPost = 593
    };

    class GuiEventBase {
    public:
        explicit GuiEventBase(int code) : m_code(code) {}
        virtual ~GuiEventBase();

        int getCode() const { return m_code; }
        virtual std::string getName() const;
        // Whether a listener of this code should act on this particular event;
        // true unless the sender says otherwise.
        virtual bool isApplicable() const { return true; }

        // Hands the event to every listener of its code, in the order they
        // were added. A listener may disconnect any connection meanwhile.
        void doEvent() const;

    private:
        int m_code;
    };

    // An event with a payload, e.g. the object that sends it.
    class NativeEvent : public GuiEventBase {
    public:
        NativeEvent(int code, boost::any data, bool applicable = true)
            : GuiEventBase(code), m_data(std::move(data)), m_applicable(applicable) {}
        const boost::any& getData() const { return m_data; }
        bool isApplicable() const override { return m_applicable; }

    private:
        boost::any m_data;
        bool m_applicable;
    };
};

#endif
