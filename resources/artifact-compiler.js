// Compiles an artifact's JSX or TSX source with Babel into a CommonJS module, and
// tells what the module imports and exports. The player page compiles with it, and
// so does the application, ahead of the page, so both make the same module.
(function (global) {
  "use strict";

  // Records, after the other transforms have had their say (type-only imports
  // dropped, the JSX runtime's import added), what the module imports and which
  // names it exports, in source order.
  function moduleShapeRecorder(shape) {
    return () => ({
      visitor: {
        Program: {
          exit(path) {
            for (const statement of path.node.body) {
              if (statement.type === "ImportDeclaration" && statement.importKind !== "type")
                shape.imports.push(statement.source.value);
              if (statement.type === "ExportAllDeclaration" && statement.source)
                shape.imports.push(statement.source.value);
              if (statement.type === "ExportDefaultDeclaration")
                shape.exports.push("default");
              if (statement.type !== "ExportNamedDeclaration" || statement.exportKind === "type")
                continue;
              if (statement.source)
                shape.imports.push(statement.source.value);
              const declaration = statement.declaration;
              if (declaration && declaration.id && declaration.id.type === "Identifier")
                shape.exports.push(declaration.id.name);
              if (declaration && declaration.type === "VariableDeclaration")
                for (const declarator of declaration.declarations)
                  if (declarator.id.type === "Identifier")
                    shape.exports.push(declarator.id.name);
              for (const specifier of statement.specifiers || [])
                if (specifier.exported)
                  shape.exports.push(specifier.exported.name || specifier.exported.value);
            }
          },
        },
      },
    });
  }

  // {code, imports, exports}; throws Babel's error (with its loc) when the source
  // does not compile.
  global.kelmoTransform = function (source) {
    const shape = { imports: [], exports: [] };
    const output = Babel.transform(source, {
      filename: "artifact.tsx",
      sourceType: "module",
      presets: [
        ["typescript", { isTSX: true, allExtensions: true }],
        ["react", { runtime: "automatic" }],
      ],
      plugins: [moduleShapeRecorder(shape), "transform-modules-commonjs"],
    });
    return { code: output.code, imports: [...new Set(shape.imports)], exports: shape.exports };
  };
})(typeof window !== "undefined" ? window : globalThis);
