#pragma once

/// What the media silencer runs in a page: functions of a text that no page can guess, by which the two tell each
/// other. Pages do to their document and to their language what they like, so both scripts keep at their start what
/// they will need.
namespace webkit::scripts {

/// Runs in every frame, in a world of its own, which pages can't see: waits for the answer to a question, which is
/// the order to pause, pauses what is in documents and hands the order on. It asks anew before it obeys. A frame
/// out of the page cache may have lost its question and asks anew; the former one may still be answered first.
/// Frames that no script runs in are reached from the frame around them.
constexpr auto frameScript = R"js((secret) => {
    const handler = window.webkit.messageHandlers.silence;
    const { addEventListener, dispatchEvent } = EventTarget.prototype;
    const selectInDocument = Document.prototype.querySelectorAll;
    const selectInTree = DocumentFragment.prototype.querySelectorAll;
    const { get: shadowRoot } = Object.getOwnPropertyDescriptor(Element.prototype, "shadowRoot");
    const pauseIn = (root, select) => {
        for (const media of select.call(root, "audio, video"))
            media.pause();
        for (const element of select.call(root, "*")) {
            const tree = shadowRoot.call(element);
            if (tree)
                pauseIn(tree, selectInTree);
        }
        for (const frame of select.call(root, "iframe, frame, object")) {
            if (frame.contentDocument)
                pauseIn(frame.contentDocument, selectInDocument);
        }
    };
    let question = 0;
    const ask = () => {
        const mine = ++question;
        handler.postMessage(null).catch((answer) => {
            if (answer.message !== "pause" && answer.message !== "again")
                return;
            if (mine === question)
                ask();
            if (answer.message !== "pause")
                return;
            dispatchEvent.call(performance, new Event(secret));
            pauseIn(document, selectInDocument);
        });
    };
    addEventListener.call(window, "pageshow", (event) => event.persisted && ask());
    ask();
})js";

/// Runs in every frame, in the page's world, before the page's own scripts: remembers elements that are made to play
/// wherever they are, and trees that are closed to our world. Proxies keep names, lengths and looks. What is called
/// often on elements of every kind is watched on media elements alone.
constexpr auto pageScript = R"js((secret) => {
    const { apply, defineProperty, get, getOwnPropertyDescriptor, setPrototypeOf } = Reflect;
    const Reference = WeakRef;
    const Stand = Proxy;
    const { deref } = Reference.prototype;
    const { add, has } = WeakSet.prototype;
    const { exec } = RegExp.prototype;
    const { pause } = HTMLMediaElement.prototype;
    const { getRootNode } = Node.prototype;
    const selectInElement = Element.prototype.querySelectorAll;
    const selectInTree = DocumentFragment.prototype.querySelectorAll;
    const getter = (prototype, name) => getOwnPropertyDescriptor(prototype, name).get;
    const isPaused = getter(HTMLMediaElement.prototype, "paused");
    const nodeType = getter(Node.prototype, "nodeType");
    const isConnected = getter(Node.prototype, "isConnected");
    const lengthOf = getter(NodeList.prototype, "length");
    const shadowRoot = getter(Element.prototype, "shadowRoot");
    const modeOf = getter(ShadowRoot.prototype, "mode");
    const innerRoot = getter(ElementInternals.prototype, "shadowRoot");
    const mediaTag = /<(?:audio|video)/i;

    // Lists without a prototype, where a page could hear what is written to them.
    const makeList = () => {
        const list = [];
        setPrototypeOf(list, null);
        return list;
    };
    const visitAll = (list, visit) => {
        for (let i = 0; i < list.length; ++i) {
            const item = apply(deref, list[i], []);
            if (item)
                visit(item);
        }
    };
    const makeMemory = () => {
        const known = new WeakSet();
        let items = makeList();
        const remember = (item) => {
            if (apply(has, known, [item]))
                return;
            apply(add, known, [item]);
            if (items.length % 64 === 63) {
                const living = makeList();
                visitAll(items, (old) => { living[living.length] = new Reference(old); });
                items = living;
            }
            items[items.length] = new Reference(item);
        };
        return { remember, visitAll: (visit) => visitAll(items, visit) };
    };
    const players = makeMemory();
    const closedTrees = makeMemory();

    const isMedia = (item) => {
        try {
            apply(isPaused, item, []);
            return true;
        } catch {
            return false;
        }
    };
    const rememberMedia = (item) => {
        if (isMedia(item))
            players.remember(item);
    };
    const rememberTree = (tree) => {
        if (tree && apply(modeOf, tree, []) === "closed")
            closedTrees.remember(tree);
    };
    const visitElements = (root, selector, visit) => {
        const type = apply(nodeType, root, []);
        if (type !== 1 && type !== 11)
            return;
        const elements = apply(type === 1 ? selectInElement : selectInTree, root, [selector]);
        const count = apply(lengthOf, elements, []);
        for (let i = 0; i < count; ++i)
            visit(elements[i]);
    };
    const rememberMediaIn = (root) => {
        rememberMedia(root);
        visitElements(root, "audio, video", players.remember);
    };
    const pauseMedia = (media) => { apply(pause, media, []); };
    const pauseIn = (tree) => {
        visitElements(tree, "audio, video", pauseMedia);
        visitElements(tree, "*", (element) => {
            const inner = apply(shadowRoot, element, []);
            if (inner)
                pauseIn(inner);
        });
    };

    // A property keeps all but the function that it is, gets or sets by.
    const replace = (prototype, name, kind, property, call) => {
        setPrototypeOf(property, null);
        property[kind] = new Stand(property[kind], { __proto__: null, apply: call });
        defineProperty(prototype, name, property);
    };
    const watch = (prototype, name, kind, call) => {
        const property = getOwnPropertyDescriptor(prototype, name);
        if (property)
            replace(prototype, name, kind, property, call);
    };
    const rememberThis = (original, media, values) => {
        rememberMedia(media);
        return apply(original, media, values);
    };
    const withResult = (remember) => (original, receiver, values) => {
        const result = apply(original, receiver, values);
        remember(result);
        return result;
    };
    // Only a text can be looked into without a call to the page.
    const mayMakeMedia = (markup) => typeof markup !== "string" || apply(exec, mediaTag, [markup]) !== null;
    const withMarkup = (position) => (original, receiver, values) => {
        const root = values.length > position && !apply(isConnected, receiver, [])
            && mayMakeMedia(values[position]) && apply(getRootNode, receiver, []);
        const result = apply(original, receiver, values);
        if (root)
            rememberMediaIn(root);
        return result;
    };

    // Calls what the page has put there for all elements, unless that led here again.
    const shadow = (name) => {
        const prototype = HTMLMediaElement.prototype;
        const general = HTMLElement.prototype;
        const property = { value: get(general, name), writable: true, enumerable: true, configurable: true };
        let isInside = false;
        replace(prototype, name, "value", property, (original, media, values) => {
            rememberMedia(media);
            if (isInside)
                return apply(original, media, values);
            isInside = true;
            try {
                const result = apply(get(general, name), media, values);
                rememberMedia(result);
                return result;
            } finally {
                isInside = false;
            }
        });
    };
    const watchAll = () => {
        const media = HTMLMediaElement.prototype;
        const element = Element.prototype;
        const tree = ShadowRoot.prototype;
        watch(media, "play", "value", rememberThis);
        watch(media, "autoplay", "set", rememberThis);
        replace(media, "attributes", "get", getOwnPropertyDescriptor(element, "attributes"), rememberThis);
        shadow("setAttribute");
        shadow("setAttributeNS");
        shadow("setAttributeNode");
        shadow("setAttributeNodeNS");
        shadow("toggleAttribute");
        shadow("cloneNode");
        watch(Document.prototype, "importNode", "value", withResult(rememberMediaIn));
        watch(Document.prototype, "adoptNode", "value", withResult(rememberMediaIn));
        watch(Range.prototype, "createContextualFragment", "value", withResult(rememberMediaIn));
        watch(element, "innerHTML", "set", withMarkup(0));
        watch(element, "outerHTML", "set", withMarkup(0));
        watch(element, "setHTMLUnsafe", "value", withMarkup(0));
        watch(element, "insertAdjacentHTML", "value", withMarkup(1));
        watch(tree, "innerHTML", "set", withMarkup(0));
        watch(tree, "setHTMLUnsafe", "value", withMarkup(0));
        watch(element, "attachShadow", "value", withResult(rememberTree));
        watch(HTMLElement.prototype, "attachInternals", "value",
            withResult((internals) => rememberTree(apply(innerRoot, internals, []))));
    };
    watchAll();
    // Neither on the window nor in the document, where pages listen.
    apply(EventTarget.prototype.addEventListener, performance, [secret, () => {
        players.visitAll(pauseMedia);
        closedTrees.visitAll(pauseIn);
    }]);
})js";

} // namespace webkit::scripts
