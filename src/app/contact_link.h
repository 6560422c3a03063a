#pragma once

#include <functional>
#include <gtkmm/button.h>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// Opens an address with the desktop's default handler (mail client, browser).
using UriOpener = std::function<void(const std::string& uri)>;
void openWithDefaultHandler(const std::string& uri);

// The mail link of an e-mail address ("mailto:<address>") and the home page of a web
// domain ("https://<domain>").
std::string mailtoURL(std::string_view address);
std::string websiteURL(std::string_view domain);

// What a link opens: the address itself when it is a valid URI, otherwise nothing.
std::optional<std::string> linkTarget(std::string_view url);

// A capsule-shaped link: a symbol and a text in the accent colour. Clicking it opens
// its address; an address that is not a valid URI makes it do nothing.
class ContactLink : public Gtk::Button {
public:
    ContactLink(const std::string& icon, const std::string& label, std::string url,
                UriOpener open = openWithDefaultHandler);

    const std::string& url() const { return url_; }

private:
    std::string url_;
    UriOpener open_;
};

} // namespace kelmo
