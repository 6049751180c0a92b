#include "PageFiles.h"

#include <fstream>
#include <utility>

namespace sim::live {

PageFiles::PageFiles(std::filesystem::path folder)
    : m_folder(std::move(folder))
{
}

static std::string contentTypeFor(const std::filesystem::path& path)
{
    static const std::pair<const char*, const char*> types[] = {
        { ".html", "text/html; charset=utf-8" },
        { ".js", "text/javascript; charset=utf-8" },
        { ".mjs", "text/javascript; charset=utf-8" },
        { ".css", "text/css; charset=utf-8" },
        { ".json", "application/json" },
        { ".svg", "image/svg+xml" },
        { ".png", "image/png" },
        { ".ico", "image/x-icon" },
        { ".woff2", "font/woff2" },
        { ".txt", "text/plain; charset=utf-8" },
    };
    std::string extension = path.extension().string();
    for (const auto& [suffix, type] : types) {
        if (extension == suffix)
            return type;
    }
    return "application/octet-stream";
}

// Every segment a plain name: no empty, hidden or parent segments, no
// backslashes or control characters.
static bool isPlainRelativePath(std::string_view path)
{
    if (path.empty())
        return false;
    size_t start = 0;
    while (start <= path.size()) {
        size_t slash = path.find('/', start);
        std::string_view segment = path.substr(start, slash == std::string_view::npos ? std::string_view::npos : slash - start);
        if (segment.empty() || segment.front() == '.')
            return false;
        for (char c : segment) {
            if (static_cast<unsigned char>(c) < 0x20 || c == '\\' || c == 0x7f)
                return false;
        }
        if (slash == std::string_view::npos)
            break;
        start = slash + 1;
    }
    return true;
}

std::optional<PageFiles::File> PageFiles::find(std::string_view urlPath) const
{
    if (!urlPath.starts_with('/') || m_folder.empty())
        return std::nullopt;
    std::string_view relative = urlPath.substr(1);
    if (relative.empty())
        relative = "index.html";
    if (!isPlainRelativePath(relative))
        return std::nullopt;

    std::error_code error;
    auto folder = std::filesystem::canonical(m_folder, error);
    if (error)
        return std::nullopt;
    // A link inside the folder must not lead out of it.
    auto path = std::filesystem::canonical(folder / relative, error);
    if (error || !std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    auto [mismatch, ignored] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
    if (mismatch != folder.end())
        return std::nullopt;
    if (std::filesystem::file_size(path, error) > largestFile || error)
        return std::nullopt;

    std::ifstream in(path, std::ios::binary);
    File file { std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()), contentTypeFor(path) };
    if (!in && !in.eof())
        return std::nullopt;
    return file;
}

PageFiles::File PageFiles::placeholder()
{
    static const char* page = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><title>Kavelin live preview</title>
<style>body{font:14px system-ui,sans-serif;margin:24px;background:#f2f2f7}img{box-shadow:0 2px 12px #0003;border-radius:8px}
textarea{width:360px;height:80px;display:block;margin:8px 0}#answer{white-space:pre-wrap;font-family:monospace}</style></head>
<body><h1>Kavelin live preview</h1><p>The full page is not installed; this one shows the screen and plays lines.</p>
<img id="screen" alt="the phone's screen" src="/shot.png">
<textarea id="line" placeholder="tap #_timeContainerView"></textarea><button id="play">Play</button>
<div id="answer"></div>
<script>
const screen = document.getElementById('screen');
const refresh = () => { screen.src = '/shot.png?' + Date.now(); };
new EventSource('/events').addEventListener('screen', refresh);
screen.addEventListener('load', () => { screen.style.width = (screen.naturalWidth / 2) + 'px'; });
document.getElementById('play').onclick = async () => {
  const answer = await fetch('/play', { method: 'POST', headers: { 'Content-Type': 'text/plain' }, body: document.getElementById('line').value });
  document.getElementById('answer').textContent = JSON.stringify(await answer.json(), null, 2);
};
</script></body></html>
)";
    return { page, "text/html; charset=utf-8" };
}

}
