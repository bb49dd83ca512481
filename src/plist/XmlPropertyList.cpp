#include "plist/XmlPropertyList.h"

#include "plist/PropertyListFields.h"
#include "plist/PropertyListLimits.h"
#include "plist/XmlPropertyListCharset.h"
#include "plist/XmlPropertyListScalars.h"

#include <expat.h>

#include <algorithm>
#include <limits>
#include <new>
#include <string>

namespace kpx {
namespace {

/// Builds the value while Expat calls. Nothing may be thrown through Expat, so every handler goes
/// through guarded().
class Reader {
public:
    /// `charset` is the name of that of the bytes, whatever they declare; null where they are to be believed.
    explicit Reader(const char* charset) : m_parser(XML_ParserCreate(charset)) {
        if (!m_parser) {
            throw std::bad_alloc();
        }
        XML_SetUserData(m_parser, this);
        XML_SetElementHandler(m_parser, &Reader::onStart, &Reader::onEnd);
        XML_SetCharacterDataHandler(m_parser, &Reader::onText);
        XML_SetEntityDeclHandler(m_parser, &Reader::onEntityDeclaration);
        // With a document type that lies elsewhere Expat passes over unknown entities in silence.
        XML_SetSkippedEntityHandler(m_parser, &Reader::onSkippedEntity);
        XML_SetUnknownEncodingHandler(m_parser, &Reader::onUnknownEncoding, this);
        XML_SetParamEntityParsing(m_parser, XML_PARAM_ENTITY_PARSING_NEVER);
    }
    ~Reader() { XML_ParserFree(m_parser); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    std::optional<Value> read(std::string_view bytes) {
        // In one piece: Expat then parses it in place, however long a single token is.
        constexpr std::size_t largestPiece = std::numeric_limits<int>::max() / 2;
        do {
            const std::string_view piece = bytes.substr(0, largestPiece);
            bytes.remove_prefix(piece.size());
            if (XML_Parse(m_parser, piece.data(), static_cast<int>(piece.size()), bytes.empty()) != XML_STATUS_OK) {
                return std::nullopt;
            }
        } while (!bytes.empty());
        return m_failed ? std::nullopt : std::move(m_root);
    }

    /// The declared character set that kept the bytes from being read, empty when it was none.
    const std::string& unknownCharset() const { return m_unknownCharset; }

private:
    /// An open array or dictionary.
    struct Container {
        bool isDictionary = false;
        std::vector<Value> values;
        Record fields;
        std::optional<Text> key;
    };

    template <typename Act>
    void guarded(const Act& act) noexcept {
        if (m_failed) {
            return;
        }
        try {
            m_failed = !act();
        } catch (const std::exception&) {
            m_failed = true;
        }
        if (m_failed) {
            XML_StopParser(m_parser, XML_FALSE);
        }
    }

    static Reader& from(void* self) { return *static_cast<Reader*>(self); }
    static void onStart(void* self, const XML_Char* name, const XML_Char**) {
        from(self).guarded([&] { return from(self).start(name); });
    }
    static void onEnd(void* self, const XML_Char* name) {
        from(self).guarded([&] { return from(self).end(name); });
    }
    static void onText(void* self, const XML_Char* text, int length) {
        from(self).guarded([&] { return from(self).text({text, static_cast<std::size_t>(length)}); });
    }
    static void onEntityDeclaration(void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
                                    const XML_Char*, const XML_Char*, const XML_Char*) {
        from(self).guarded([] { return false; });
    }
    static void onSkippedEntity(void* self, const XML_Char*, int) {
        from(self).guarded([] { return false; });
    }

    static int onUnknownEncoding(void* self, const XML_Char* name, XML_Encoding*) {
        Reader& reader = *static_cast<Reader*>(self);
        reader.guarded([&] {
            reader.m_unknownCharset = name;
            return true;
        });
        return XML_STATUS_ERROR;
    }

    bool start(std::string_view name) {
        if (m_inScalar) {
            return false;
        }
        if (name == "plist") {
            const bool isOutermost = m_containers.empty() && !m_root && !m_inPlist;
            m_inPlist = true;
            return isOutermost;
        }
        if (m_containers.empty() ? m_root.has_value() : !isExpectedInContainer(name)) {
            return false;
        }
        if (name == "array" || name == "dict") {
            m_containers.emplace_back().isDictionary = name == "dict";
            return m_containers.size() <= maximumNesting;
        }
        m_inScalar = true;
        m_text.clear();
        return true;  // an unknown element is found out at its end
    }

    bool isExpectedInContainer(std::string_view name) const {
        const Container& container = m_containers.back();
        return container.isDictionary ? container.key.has_value() != (name == "key") : name != "key";
    }

    bool text(std::string_view piece) {
        if (m_inScalar) {
            m_text += piece;
            return true;
        }
        return isBlank(piece);
    }

    bool end(std::string_view name) {
        if (!m_inScalar) {
            return name == "plist" || endContainer();
        }
        m_inScalar = false;
        if (name == "key" && !m_containers.empty()) {
            m_containers.back().key = m_pool.shared(m_text);
            return true;
        }
        std::optional<Value> value = scalar(name);
        return value && add(*std::move(value));
    }

    bool endContainer() {
        Container& container = m_containers.back();
        if (container.key) {
            return false;  // a key without a value
        }
        Value value = container.isDictionary ? Value(recordKeepingLastValues(std::move(container.fields)))
                                             : Value(Array(std::move(container.values)));
        m_containers.pop_back();
        return add(std::move(value));
    }

    template <typename T>
    static std::optional<Value> asValue(const std::optional<T>& content) {
        return content ? std::optional(Value(*content)) : std::nullopt;
    }

    std::optional<Value> scalar(std::string_view name) {
        if (name == "string") {
            return Value(m_pool.shared(m_text));
        }
        if (name == "integer") {
            return integerFromXml(m_text);
        }
        if (name == "real") {
            return asValue(realFromXml(m_text));
        }
        if (name == "date") {
            return asValue(dateFromXml(m_text));
        }
        if (name == "data") {
            return asValue(dataFromXml(m_text));
        }
        if ((name == "true" || name == "false") && isBlank(m_text)) {
            return Value(name == "true");
        }
        return std::nullopt;
    }

    bool add(Value value) {
        if (m_containers.empty()) {
            m_root = std::move(value);
            return true;
        }
        Container& container = m_containers.back();
        if (container.isDictionary) {
            container.fields.append(*container.key, std::move(value));
            container.key.reset();
        } else {
            container.values.push_back(std::move(value));
        }
        return true;
    }

    XML_Parser m_parser;
    std::vector<Container> m_containers;
    std::optional<Value> m_root;
    TextPool m_pool;
    std::string m_unknownCharset;
    std::string m_text;  // of the open scalar element
    bool m_inScalar = false;
    bool m_inPlist = false;
    bool m_failed = false;
};

}  // namespace

std::optional<Value> readXmlPropertyList(std::string_view bytes) {
    std::optional<std::string> charset = charsetOfXmlBytes(bytes);
    if (!charset) {
        Reader reader(nullptr);
        std::optional<Value> value = reader.read(bytes);
        if (reader.unknownCharset().empty()) {
            return value;
        }
        charset = reader.unknownCharset();
    }
    const std::optional<std::string> text = utf8FromCharset(bytes, *charset);
    return text ? Reader("UTF-8").read(*text) : std::nullopt;
}

}  // namespace kpx
