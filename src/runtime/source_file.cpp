#include "runtime/source_file.h"

#include "runtime/scheme_support.h"

#include <gio/gio.h>
#include <sys/stat.h>

namespace kelmo {

SourceFile SourceFile::read(const std::filesystem::path& file, std::size_t largest) {
    struct stat info {};
    if (::stat(file.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return {std::nullopt, Problem::unreadable};
    if (static_cast<std::size_t>(info.st_size) > largest)
        return {std::nullopt, Problem::tooLarge};
    auto code = readWholeFile(file);
    if (!code)
        return {std::nullopt, Problem::unreadable};
    if (code->size() > largest)
        return {std::nullopt, Problem::tooLarge};
    if (!isValidUtf8(*code))
        return {std::nullopt, Problem::notText};
    return {std::move(code), std::nullopt};
}

namespace {

struct BackgroundRead {
    std::filesystem::path file;
    std::size_t largest;
    std::function<void(SourceFile)> done;
    SourceFile result;
};

} // namespace

void SourceFile::readInBackground(std::filesystem::path file, std::size_t largest,
                                  std::function<void(SourceFile)> done) {
    // GTask calls back on the main context it was made on, after the worker returned.
    GTask* task = g_task_new(
        nullptr, nullptr,
        [](GObject*, GAsyncResult* result, gpointer) {
            auto* job = static_cast<BackgroundRead*>(g_task_get_task_data(G_TASK(result)));
            job->done(std::move(job->result));
        },
        nullptr);
    g_task_set_task_data(task, new BackgroundRead{std::move(file), largest, std::move(done), {}},
                         [](gpointer job) { delete static_cast<BackgroundRead*>(job); });
    g_task_run_in_thread(task, [](GTask* running, gpointer, gpointer data, GCancellable*) {
        auto* job = static_cast<BackgroundRead*>(data);
        job->result = read(job->file, job->largest);
        g_task_return_boolean(running, TRUE);
    });
    g_object_unref(task);
}

} // namespace kelmo
