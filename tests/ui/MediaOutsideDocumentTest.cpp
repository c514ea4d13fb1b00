#include "ui/MediaTest.h"

#include <ostream>

namespace {

/// A way for a script to make something play that is in no document, or is hidden from scripts there.
struct Way {
    const char* name;
    const char* script;
    const char* markup = "";
};

std::ostream& operator<<(std::ostream& stream, const Way& way)
{
    return stream << way.name;
}

class MediaOutsideDocumentTest : public MediaTest, public testing::WithParamInterface<Way> {
protected:
    /// What the ways start from: an element that has all but the wish to play, and one that has that as well.
    [[nodiscard]] static std::string pageFor(const Way& way)
    {
        return std::string(way.markup)
            + "<script>const still = () => { const made = new Audio('/sound.wav'); made.muted = made.loop = true; "
              "return made };"
              "const markup = '<p><audio autoplay muted loop src=/sound.wav></audio></p>';"
              "const mediaIn = (root) => root.querySelector('audio');"
              "const box = document.createElement('div');"
              "let player;"
            + way.script + "</script>";
    }
};

TEST_P(MediaOutsideDocumentTest, FallsSilent)
{
    show();
    openPlaying(pageFor(GetParam()));

    webView->pauseAllMediaPlayback();

    EXPECT_TRUE(comesToSilence());
}

constexpr Way byAttribute[] = {
    { "Play", "player = still(); player.play()" },
    { "AutoplayProperty", "player = still(); player.autoplay = true" },
    { "SetAttribute", "player = still(); player.setAttribute('autoplay', '')" },
    { "ToggleAttribute", "player = still(); player.toggleAttribute('autoplay')" },
    { "SetAttributeNS", "player = still(); player.setAttributeNS(null, 'autoplay', '')" },
    { "SetAttributeNode", "player = still(); player.setAttributeNode(document.createAttribute('autoplay'))" },
    { "SetAttributeNodeNS", "player = still(); player.setAttributeNodeNS(document.createAttribute('autoplay'))" },
    { "NamedItem", "player = still(); player.attributes.setNamedItem(document.createAttribute('autoplay'))" },
    { "Video",
        "player = document.createElement('video'); player.muted = player.loop = true; "
        "player.src = '/sound.wav'; player.setAttribute('autoplay', '')" },
};

constexpr Way byCopy[] = {
    { "CloneNode",
        "player = mediaIn(document.getElementById('template').content).cloneNode(); "
        "document.adoptNode(player); player.load()",
        "<template id=template><audio autoplay muted loop src=/sound.wav></audio></template>" },
    { "CloneInDocument", "player = document.querySelector('audio').cloneNode()",
        "<audio autoplay muted loop src=/sound.wav></audio>" },
    { "ImportNode", "player = document.importNode(mediaIn(document.getElementById('template').content))",
        "<template id=template><audio autoplay muted loop src=/sound.wav></audio></template>" },
    { "ImportTree", "player = mediaIn(document.importNode(document.getElementById('template').content, true))",
        "<template id=template><audio autoplay muted loop src=/sound.wav></audio></template>" },
};

constexpr Way byMarkup[] = {
    { "InnerHTML", "box.innerHTML = markup; player = mediaIn(box)" },
    { "OuterHTML",
        "box.append(document.createElement('b')); box.firstChild.outerHTML = markup; player = mediaIn(box)" },
    { "InsertAdjacentHTML", "box.insertAdjacentHTML('beforeend', markup); player = mediaIn(box)" },
    { "InsertAdjacentHTMLBeside",
        "box.append(document.createElement('b')); "
        "box.firstChild.insertAdjacentHTML('afterend', markup); player = mediaIn(box)" },
    { "SetHTMLUnsafe", "box.setHTMLUnsafe(markup); player = mediaIn(box)" },
    { "UpperCase",
        "box.innerHTML = '<P><AUDIO AUTOPLAY MUTED LOOP SRC=/sound.wav></AUDIO></P>'; player = mediaIn(box)" },
    { "VideoInnerHTML",
        "box.innerHTML = '<video autoplay muted loop src=/sound.wav></video>'; "
        "player = box.firstChild" },
    { "ContextualFragment", "player = mediaIn(document.createRange().createContextualFragment(markup))" },
    { "OpenShadowOutside",
        "const root = box.attachShadow({ mode: 'open' }); root.innerHTML = markup; "
        "player = mediaIn(root)" },
    { "ClosedShadowOutside",
        "const root = box.attachShadow({ mode: 'closed' }); root.innerHTML = markup; "
        "player = mediaIn(root)" },
    { "ClosedShadow",
        "const root = document.getElementById('host').attachShadow({ mode: 'closed' }); "
        "root.innerHTML = markup; player = mediaIn(root)",
        "<div id=host></div>" },
    { "ClosedShadowInClosedShadow",
        "const outer = document.getElementById('host').attachShadow({ mode: 'closed' }); outer.innerHTML = "
        "'<span></span>'; "
        "const root = outer.firstChild.attachShadow({ mode: 'open' }); root.innerHTML = markup; player = mediaIn(root)",
        "<div id=host></div>" },
    { "ClosedShadowByMarkup",
        "customElements.define('x-player', class extends HTMLElement { constructor() { super(); "
        "player = mediaIn(this.attachInternals().shadowRoot) } })",
        "<x-player><template shadowrootmode=closed><audio autoplay muted loop src=/sound.wav></audio></template>"
        "</x-player>" },
};

/// Pages take what a frame of theirs has to offer, before any script of ours has been there or after.
constexpr Way byFrame[] = {
    { "MadeFramesAudio",
        "const frame = document.createElement('iframe'); document.documentElement.append(frame); "
        "player = new frame.contentWindow.Audio('/sound.wav'); player.muted = player.loop = true; player.play()" },
    { "EmptyFramesAudio",
        "player = new frames[0].Audio('/sound.wav'); player.muted = player.loop = true; "
        "document.getElementById('frame').contentWindow; player.play()",
        "<iframe id=frame></iframe>" },
    { "EmptyFramesPlay",
        "const view = document.getElementById('frame').contentWindow; "
        "player = still(); view.HTMLMediaElement.prototype.play.call(player)",
        "<iframe id=frame></iframe>" },
    { "EmptyFramesDocument",
        "const view = document.getElementById('frame').contentDocument.defaultView; "
        "player = new view.Audio('/sound.wav'); player.muted = player.loop = true; "
        "player.setAttribute('autoplay', '')",
        "<iframe id=frame></iframe>" },
};

/// Pages may do to the language what they like.
constexpr Way despitePage[] = {
    { "FrozenPrototype", "Object.freeze(HTMLMediaElement.prototype); player = still(); player.play()" },
    { "BrokenCollections",
        "const fail = () => { throw new Error('broken') }; "
        "for (const kind of [WeakRef, WeakSet, Set, Map]) for (const name of ['deref', 'add', 'has', 'get', 'set']) "
        "if (kind.prototype[name]) kind.prototype[name] = fail; "
        "for (const name of ['filter', 'push', 'forEach', 'keys', 'values', Symbol.iterator]) "
        "Array.prototype[name] = fail; "
        "RegExp.prototype.exec = Reflect.apply = Function.prototype.call = Function.prototype.apply = fail; "
        "player = still(); player.play()" },
    { "TrapsForEveryProxy",
        "for (const trap of ['get', 'has', 'apply', 'getPrototypeOf', 'value', 'set', 'writable']) "
        "Object.prototype[trap] = () => { throw new Error('trapped') }; "
        "player = still(); player.play()" },
    { "SettersForEveryList",
        "for (let i = 0; i < 9; ++i) Object.defineProperty(Array.prototype, i, "
        "{ set() { throw new Error('caught') } }); player = still(); player.play()" },
    { "WrittenAnew",
        "player = still(); player.play(); document.open(); document.write('<p>anew</p>'); document.close()" },
};

const auto nameOf = [](const testing::TestParamInfo<Way>& info) { return std::string(info.param.name); };

INSTANTIATE_TEST_SUITE_P(ByAttribute, MediaOutsideDocumentTest, testing::ValuesIn(byAttribute), nameOf);
INSTANTIATE_TEST_SUITE_P(ByCopy, MediaOutsideDocumentTest, testing::ValuesIn(byCopy), nameOf);
INSTANTIATE_TEST_SUITE_P(ByMarkup, MediaOutsideDocumentTest, testing::ValuesIn(byMarkup), nameOf);
INSTANTIATE_TEST_SUITE_P(ByFrame, MediaOutsideDocumentTest, testing::ValuesIn(byFrame), nameOf);
INSTANTIATE_TEST_SUITE_P(DespiteThePage, MediaOutsideDocumentTest, testing::ValuesIn(despitePage), nameOf);

} // namespace
