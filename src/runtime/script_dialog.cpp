#include "runtime/script_dialog.h"

namespace kelmo {
namespace {

ScriptDialog::Kind kindOf(WebKitScriptDialog* dialog) {
    switch (webkit_script_dialog_get_dialog_type(dialog)) {
    case WEBKIT_SCRIPT_DIALOG_CONFIRM:
    case WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM:
        return ScriptDialog::Kind::confirm;
    case WEBKIT_SCRIPT_DIALOG_PROMPT:
        return ScriptDialog::Kind::prompt;
    case WEBKIT_SCRIPT_DIALOG_ALERT:
        break;
    }
    return ScriptDialog::Kind::alert;
}

} // namespace

ScriptDialog::ScriptDialog(WebKitScriptDialog* dialog)
    : dialog_{webkit_script_dialog_ref(dialog)}, kind_{kindOf(dialog)} {
    if (const char* message = webkit_script_dialog_get_message(dialog))
        message_ = message;
    if (kind_ == Kind::prompt) {
        if (const char* text = webkit_script_dialog_prompt_get_default_text(dialog))
            defaultText_ = text;
    }
}

ScriptDialog::~ScriptDialog() {
    // Unanswered: the page's script goes on as after Cancel.
    if (dialog_) {
        webkit_script_dialog_close(dialog_);
        webkit_script_dialog_unref(dialog_);
    }
}

void ScriptDialog::accept(const std::string& text) {
    if (!dialog_)
        return;
    if (kind_ == Kind::confirm)
        webkit_script_dialog_confirm_set_confirmed(dialog_, TRUE);
    else if (kind_ == Kind::prompt)
        webkit_script_dialog_prompt_set_text(dialog_, text.c_str());
    close();
}

void ScriptDialog::cancel() {
    if (!dialog_)
        return;
    if (kind_ == Kind::confirm)
        webkit_script_dialog_confirm_set_confirmed(dialog_, FALSE);
    close();
}

void ScriptDialog::close() {
    WebKitScriptDialog* dialog = dialog_;
    dialog_ = nullptr;
    webkit_script_dialog_close(dialog);
    webkit_script_dialog_unref(dialog);
    closed_.emit();
}

} // namespace kelmo
