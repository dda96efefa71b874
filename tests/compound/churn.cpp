// Random changes of a compound file, beside a model in memory.
#include "churn.h"

namespace compound_test {

using compound::ElementId;
using compound::Error;
using compound::File;
using compound::Stream;

Error Churn::step(File& file) {
    before = model;
    overwritten_.clear();
    switch (below(12)) {
        case 0:
        case 1:
        case 2:
            return create(file);
        case 3:
            return createStorage(file);
        case 4:
        case 5:
        case 6:
        case 7:
            return write(file);
        case 8:
            return resize(file);
        case 9:
            return relocate(file);
        default:
            return remove(file);
    }
}

std::string Churn::noise(std::size_t size) {
    std::string text(size, 0);
    for (auto& byte : text) byte = static_cast<char>(random_() >> 8);
    return text;
}

std::u16string Churn::freshName() {
    std::u16string name(1 + below(8), u'a');
    for (auto& unit : name) unit = u"abcXYZ\u00DF\u00FF\u0416\u4E00"[below(10)];
    return name;
}

std::u16string Churn::pick(bool storages, bool streams) {
    std::vector<std::u16string> paths;
    for (const auto& [path, bytes] : model) {
        if (path.back() == u'/' ? storages : streams) paths.push_back(path);
    }
    return paths.empty() ? std::u16string() : paths[below(paths.size())];
}

ElementId Churn::find(File& file, const std::u16string& path) {
    auto id = File::root;
    for (std::size_t at = 1; at < path.size();) {
        const auto end = std::min(path.find(u'/', at), path.size());
        id = *file.find(id, path.substr(at, end - at));
        at = end + 1;
    }
    return id;
}

Error Churn::create(File& file) {
    const auto storage = below(2) == 0 ? std::u16string() : pick(true, false);
    const auto name = freshName();
    const auto id = file.createStream(find(file, storage), name);
    if (id) model[(storage.empty() ? u"/" : storage) + name] = {};
    return id.error();
}

Error Churn::createStorage(File& file) {
    const auto storage = below(2) == 0 ? std::u16string() : pick(true, false);
    const auto name = freshName();
    const auto id = file.createStorage(find(file, storage), name, 1);
    if (id) model[(storage.empty() ? u"/" : storage) + name + u"/"] = {};
    return id.error();
}

Error Churn::write(File& file) {
    const auto path = pick(false, true);
    if (path.empty()) return Error::none;
    const auto bytes = noise(below(below(4) == 0 ? largest_ : 300));
    auto content = model[path];
    const auto position = below(2) == 0 ? content.size() : below(content.size() + 200);
    if (!bytes.empty()) {
        if (position < content.size()) overwritten_ = path;
        content.resize(std::max(content.size(), position + bytes.size()));
        content.replace(position, bytes.size(), bytes);
        overwriting_ = content;
    }
    const auto error = Stream(file, find(file, path)).write(position, bytes.data(), bytes.size());
    if (error == Error::none) model[path] = content;
    return error;
}

Error Churn::resize(File& file) {
    const auto path = pick(false, true);
    if (path.empty()) return Error::none;
    const auto size = below(3) == 0 ? 0 : below(largest_);
    const auto error = Stream(file, find(file, path)).resize(size);
    if (error == Error::none) model[path].resize(size);
    return error;
}

Error Churn::remove(File& file) {
    const auto path = pick(below(4) == 0, true);
    if (path.empty()) return Error::none;
    const auto error = file.remove(find(file, path));
    if (error != Error::none) return error;
    std::erase_if(model, [&](const auto& entry) {
        return entry.first == path || (path.back() == u'/' && entry.first.starts_with(path));
    });
    return error;
}

Error Churn::relocate(File& file) {
    const auto path = pick(true, true), target = below(2) == 0 ? u"/" : pick(true, false);
    if (path.empty() || target.empty()) return Error::none;
    const auto name = freshName();
    const auto error = file.move(find(file, path), find(file, target == u"/" ? u"" : target), name);
    if (error != Error::none) return error;
    Contents moved;
    for (const auto& [old, bytes] : model) {
        const bool below = old == path || (path.back() == u'/' && old.starts_with(path));
        const auto end = path.back() == u'/' ? path.size() - 1 : path.size();
        moved[below ? target + name + old.substr(end) : old] = bytes;
    }
    model = moved;
    return error;
}

// While a stream is overwritten, its bytes may be of both contents, and its size of either.
bool Churn::allows(const Contents& contents) const {
    if (contents == before || contents == model) return true;
    if (overwritten_.empty() || !contents.contains(overwritten_)) return false;
    const auto& old = before.at(overwritten_);
    const auto& fresh = overwriting_;
    const auto& found = contents.at(overwritten_);
    if (found.size() != old.size() && found.size() != fresh.size()) return false;
    auto others = contents;
    others[overwritten_] = old;
    if (others != before) return false;
    for (std::size_t i = 0; i < found.size(); ++i) {
        const bool isOld = i < old.size() && found[i] == old[i];
        const bool isFresh = i < fresh.size() && found[i] == fresh[i];
        if (!isOld && !isFresh) return false;
    }
    return true;
}

namespace {

void collect(File& file, ElementId storage, const std::u16string& path, Contents& contents) {
    const auto children = file.children(storage);
    for (const auto& id : *children) {
        const auto info = file.info(id);
        if (info->kind == compound::Kind::stream) {
            auto& bytes = contents[path + info->name];
            bytes.resize(info->size);
            if (!Stream(file, id).read(0, bytes.data(), bytes.size())) bytes = "unreadable";
        } else {
            contents[path + info->name + u"/"] = {};
            collect(file, id, path + info->name + u"/", contents);
        }
    }
}

}  // namespace

Contents contentsOf(File& file) {
    Contents contents;
    collect(file, File::root, u"/", contents);
    return contents;
}

}  // namespace compound_test
