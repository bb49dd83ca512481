#pragma once

#include "app/Ports.h"
#include "tests/support/Json.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// The ports that only report what they are asked, or answer what a test told them.

namespace kpx::test {

class WindowDouble : public WindowPresenter {
public:
    explicit WindowDouble(EventSink sink) : m_sink(std::move(sink)) {}

    void makeFirstResponder(const Control& control) override;
    void unfold(const Control&) override {}
    void beep() override;
    void showSplash(const std::vector<std::string>& fields) override;
    void closeSplash() override;
    void makeMainWindowKeyAndFront(bool) override {}
    void setSmallFont(const Control&) override {}
    void terminate() override;
    void log(const std::string& text) override;

    bool hasTerminated() const { return m_terminated; }

private:
    EventSink m_sink;
    bool m_terminated = false;
};

class WorkspaceDouble : public Workspace {
public:
    /// No application-data folder for an empty path.
    WorkspaceDouble(EventSink sink, std::filesystem::path applicationSupport)
        : m_sink(std::move(sink)), m_applicationSupport(std::move(applicationSupport)) {}

    void open(const std::string& target, std::function<void()> failed) override;
    /// By the name's extension, else by how the file begins.
    FileType typeOfFile(const std::filesystem::path& file) override;
    std::vector<std::string> runningApplications() override { return m_runningApplications; }
    std::vector<std::filesystem::path> applicationSupportDirectories() override;

    void setOpeningWorks(bool works) { m_openingWorks = works; }
    void setRunningApplications(std::vector<std::string> names) { m_runningApplications = std::move(names); }

private:
    EventSink m_sink;
    std::filesystem::path m_applicationSupport;
    bool m_openingWorks = true;
    std::vector<std::string> m_runningApplications;
};

class FileChooserDouble : public FileChooser {
public:
    void chooseFile(const std::filesystem::path& folder,
                    std::function<void(const std::filesystem::path& file)> chosen) override;

    /// What the next chooser answers, once; none cancels, as at first.
    void setAnswer(std::optional<std::filesystem::path> file) { m_answer = std::move(file); }

private:
    std::optional<std::filesystem::path> m_answer;
};

class ClipboardDouble : public Clipboard {
public:
    std::string address() override { return m_address; }
    void setText(const std::string& plain, const std::string&) override { m_address = plain; }

    void setAddress(std::string address) { m_address = std::move(address); }

private:
    std::string m_address;
};

class SystemDouble : public SystemInformation {
public:
    explicit SystemDouble(Region region) : m_region(std::move(region)) {}

    Version systemVersion() override { return m_version; }
    Region region() override { return m_region; }
    std::string appearanceStyle() override { return m_dark ? "Dark" : ""; }

    void setSystemVersion(Version version) { m_version = version; }
    /// Tells the program when it is a change.
    void setDark(bool dark);

private:
    Region m_region;
    Version m_version{11, 0};
    bool m_dark = false;
};

class WebDouble : public WebFetch {
public:
    explicit WebDouble(EventSink sink) : m_sink(std::move(sink)) {}

    std::optional<Response> fetch(const std::string& address) override;
    /// Null: no answer comes, as at first.
    void setResponse(std::optional<Response> response) { m_response = std::move(response); }

private:
    EventSink m_sink;
    std::optional<Response> m_response;
};

class PreviewDouble : public PrintPreview {
public:
    explicit PreviewDouble(EventSink sink) : m_sink(std::move(sink)) {}

    void open(Document document) override;
    /// Those of DejaVu Sans, whatever the font.
    FontMetrics metrics(const std::string& font, double size) override;

    const std::vector<Document>& documents() const { return m_documents; }

private:
    EventSink m_sink;
    std::vector<Document> m_documents;
};

class BundleDouble : public Bundle {
public:
    std::filesystem::path resources() override { return m_resources; }
    std::string shortVersionString() override { return m_version; }

    void setResources(std::filesystem::path resources) { m_resources = std::move(resources); }
    void setShortVersionString(std::string version) { m_version = std::move(version); }

private:
    /// Absolute, so that nothing is read below the current folder by accident.
    std::filesystem::path m_resources = "/nonexistent/resources";
    std::string m_version = KPX_VERSION;
};

}  // namespace kpx::test
