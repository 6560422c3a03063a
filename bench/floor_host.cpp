// The engine floor: the least a GTK program must do to show a page in WebKit. One
// window with one web view that loads the HTML file named on the command line, with
// WebKit writing the page's console messages out (it puts them on standard error).
// The launch benchmark compares Kelmo with it.

#include <cstdio>
#include <cstring>
#include <epoxy/gl.h>
#include <gtk/gtk.h>
#include <webkit/webkit.h>

namespace {

gboolean quitOnClose(GtkWindow*, gpointer loop) {
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return FALSE;
}

// GTK's GL renderer on a software rasteriser costs a start hundreds of milliseconds;
// Kelmo draws with cairo there, and so does the floor, so that both draw alike.
void drawLikeKelmo() {
    if (g_getenv("GSK_RENDERER"))
        return;
    GdkGLContext* context = gdk_display_create_gl_context(gdk_display_get_default(), nullptr);
    if (!context)
        return;
    const char* renderer = nullptr;
    if (gdk_gl_context_realize(context, nullptr)) {
        gdk_gl_context_make_current(context);
        renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    }
    const bool software =
        renderer && (std::strstr(renderer, "llvmpipe") || std::strstr(renderer, "softpipe") ||
                     std::strstr(renderer, "swrast"));
    gdk_gl_context_clear_current();
    g_object_unref(context);
    if (software)
        g_setenv("GSK_RENDERER", "cairo", TRUE);
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s PAGE.html\n", argv[0]);
        return 2;
    }
    gtk_init();
    drawLikeKelmo();

    GFile* file = g_file_new_for_commandline_arg(argv[1]);
    gchar* uri = g_file_get_uri(file);
    g_object_unref(file);

    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    GtkWidget* window = gtk_window_new();
    gtk_window_set_default_size(GTK_WINDOW(window), 1100, 700);
    g_signal_connect(window, "close-request", G_CALLBACK(quitOnClose), loop);

    GtkWidget* webView = webkit_web_view_new();
    WebKitSettings* settings = webkit_web_view_get_settings(WEBKIT_WEB_VIEW(webView));
    g_object_set(settings, "enable-write-console-messages-to-stdout", TRUE, nullptr);
    gtk_window_set_child(GTK_WINDOW(window), webView);
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(webView), uri);
    g_free(uri);

    gtk_window_present(GTK_WINDOW(window));
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
    return 0;
}
