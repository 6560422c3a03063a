#pragma once

#include <sigc++/signal.h>
#include <string>
#include <webkit/webkit.h>

namespace kelmo {

// A dialog that a page opened with alert(), confirm() or prompt(). The page's script
// waits until it is answered: accept() is OK (with the text typed, for a prompt),
// cancel() is Cancel, or the dialog going away unanswered. Either closes it, once;
// closing it again does nothing.
class ScriptDialog {
public:
    enum class Kind { alert, confirm, prompt };

    // Keeps a reference on the dialog until it is closed.
    explicit ScriptDialog(WebKitScriptDialog* dialog);
    ~ScriptDialog();
    ScriptDialog(const ScriptDialog&) = delete;
    ScriptDialog& operator=(const ScriptDialog&) = delete;

    Kind kind() const { return kind_; }
    const std::string& message() const { return message_; }
    // What a prompt's field starts with.
    const std::string& defaultText() const { return defaultText_; }

    void accept(const std::string& text = {});
    void cancel();
    bool isOpen() const { return dialog_ != nullptr; }

    // Emitted once, when the dialog closes for any reason.
    sigc::signal<void()>& signalClosed() { return closed_; }

private:
    void close();

    WebKitScriptDialog* dialog_;
    Kind kind_;
    std::string message_;
    std::string defaultText_;
    sigc::signal<void()> closed_;
};

} // namespace kelmo
