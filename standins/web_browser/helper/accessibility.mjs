const kTold = new Set(['expanded', 'selected', 'pressed', 'disabled', 'focused', 'live']);

/**
 * What the browser reports about a page to a screen reader: {role, name, properties} in the page's
 * order.
 */
export async function accessibleNodes(page) {
  await page.send('Accessibility.enable');
  const { nodes } = await page.send('Accessibility.getFullAXTree');
  await page.send('Accessibility.disable');
  const byId = new Map(nodes.map((node) => [node.nodeId, node]));
  const told = [];
  const walk = (node) => {
    if (!node.ignored) told.push(describe(node));
    for (const id of node.childIds ?? []) {
      if (byId.has(id)) walk(byId.get(id));
    }
  };
  nodes.filter(({ parentId }) => parentId === undefined).forEach(walk);
  return told;
}

function describe({ role, name, properties = [] }) {
  const known = properties.filter((property) => kTold.has(property.name));
  return {
    role: role?.value ?? '',
    name: name?.value ?? '',
    properties: Object.fromEntries(known.map((property) => [property.name, property.value.value])),
  };
}
