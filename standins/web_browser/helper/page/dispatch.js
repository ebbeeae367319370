// Late-bound calls of the host: objects are handles, members are found without regard to case. A
// request is {h: handle, n: member name, k: DISPATCH_ flags, a: arguments, e: current event, r:
// handles that the host released}. An answer is {v: value} or {e: HRESULT, d: description}. Values
// are JSON, with {h: handle} for an object, {h: 0} for an absent one, {u: 1} for none and {l:
// values} for a part of a collection.

const kMethod = 1;
const kPropertyGet = 2;
const kPropertyPut = 4 | 8;
const kMemberNotFound = 0x80020003;
const kBadParameterCount = 0x8002000e;
const kUnspecified = 0x80004005;
const kDisconnected = 0x80010108;
const kWindowHandle = 2;  // After that of the document.
const kMembers = '[members]';

const objects = new Map();
const handles = new WeakMap();
let lastHandle = 0;

class DispatchFailure extends Error {
  constructor(code, description) {
    super(description);
    this.code = code;
  }
}

function handleOf(object) {
  let handle = handles.get(object);
  if (handle === undefined) {
    handle = ++lastHandle;
    handles.set(object, handle);
    objects.set(handle, object);
  }
  return handle;
}

function release(handle) {
  if (handle <= kWindowHandle || !objects.has(handle)) return;
  handles.delete(objects.get(handle));
  objects.delete(handle);
}

function encode(value) {
  if (value === undefined || typeof value === 'function') return { u: 1 };
  if (value === null) return { h: 0 };
  if (typeof value === 'object') return { h: handleOf(value) };
  if (typeof value === 'number' && !Number.isFinite(value)) return { u: 1 };
  return value;
}

function decode(value) {
  if (value === null || typeof value !== 'object') return value;
  if (value.u) return undefined;
  return value.h === 0 ? null : objectOf(value.h);
}

function objectOf(handle) {
  const object = objects.get(handle);
  if (object === undefined) throw new DispatchFailure(kDisconnected, 'The object is gone');
  return object;
}

// Members in a form that only the host sees; page scripts keep the engine's own.
const isNoise = (node) => node.nodeType === Node.TEXT_NODE && /^[ \t\r\n\f]*$/.test(node.data);
const descendants = (root) => new ElementCollection(() => [...root.getElementsByTagName('*')]);
const kHostMembers = [
  [Document, { all: descendants }],
  [Element, {
    all: descendants,
    children: (element) => new ElementCollection(() => [...element.children]),
  }],
  [Node, {
    childnodes: (node) =>
      new ElementCollection(() => [...node.childNodes].filter((child) => !isNoise(child))),
  }],
  [Window, { event: () => events.current() }],
];

function hostMember(object, lowerName) {
  for (const [type, members] of kHostMembers) {
    if (object instanceof type && Object.hasOwn(members, lowerName)) return members[lowerName];
  }
  return undefined;
}

const spellings = new WeakMap();

/** The engine's spelling of a member name, or undefined if the object has no such member. */
function spellingOf(object, name) {
  if (name in object) return name;
  const prototype = Object.getPrototypeOf(object);
  let table = spellings.get(prototype);
  if (table === undefined) {
    table = new Map();
    for (let level = object; level !== null; level = Object.getPrototypeOf(level)) {
      for (const own of Object.getOwnPropertyNames(level)) {
        if (!table.has(own.toLowerCase())) table.set(own.toLowerCase(), own);
      }
    }
    // The engine creates style properties on demand and lists them only here.
    for (const listed in object) {
      if (!table.has(listed.toLowerCase())) table.set(listed.toLowerCase(), listed);
    }
    spellings.set(prototype, table);
  }
  const spelling = table.get(name.toLowerCase());
  return spelling !== undefined && spelling in object ? spelling : undefined;
}

function setStyle(style, name, value) {
  const before = style[name];
  style[name] = value ?? '';
  // A bare number is a length in pixels; the engine drops it.
  const isBareNumber = /^-?\d+(\.\d+)?$/.test(String(value).trim());
  if (isBareNumber && style[name] === before) style[name] = `${value}px`;
}

function defaultValue(object, args) {
  if (args.length === 0) return '[object]';
  if (!(typeof object.item === 'function')) {
    throw new DispatchFailure(kBadParameterCount, 'The object has no default member with arguments');
  }
  return object.item(...args);
}

/** Some members of a collection, for its enumerator. */
function membersOf(object, [from, count]) {
  if (!(typeof object.item === 'function')) throw new DispatchFailure(kMemberNotFound, 'No collection');
  const all = object instanceof ElementCollection ? object.members_() : object;
  return { l: Array.prototype.slice.call(all, from, from + count).map(encode) };
}

function put(object, name, args) {
  if (args.length !== 1) throw new DispatchFailure(kBadParameterCount, `${name} takes one value`);
  if (object instanceof CSSStyleDeclaration) setStyle(object, name, args[0]);
  else object[name] = args[0];
  return { u: 1 };
}

function invoke({ h, n, k, a }) {
  const object = objectOf(h);
  const args = a.map(decode);
  if (n === '') return encode(defaultValue(object, args));
  if (n === kMembers) return membersOf(object, args);
  const special = hostMember(object, n.toLowerCase());
  const name = special ? n : spellingOf(object, n);
  if (name === undefined) throw new DispatchFailure(kMemberNotFound, `No member ${n}`);
  if (k & kPropertyPut) return put(object, name, args);
  const member = special ? special(object) : object[name];
  const isMethod = !special && typeof member === 'function';
  if (!(k & (isMethod ? kMethod : kPropertyGet))) {
    throw new DispatchFailure(kMemberNotFound, `${n} is not called that way`);
  }
  if (!isMethod) return encode(args.length ? defaultValue(member, args) : member);
  const result = member.apply(object, args);
  // A missing attribute is a null value, not an absent object.
  return result === null && name === 'getAttribute' ? null : encode(result);
}

/** Answers one request, as JSON text. */
function answer(request) {
  try {
    for (const handle of request.r ?? []) release(handle);
    events.enter(request.e ?? 0);
    return JSON.stringify({ v: invoke(request) });
  } catch (error) {
    return JSON.stringify({ e: error.code > 0x7fffffff ? error.code : kUnspecified,
                            d: String(error.message) });
  }
}

handleOf(document);
handleOf(window);
