import { fileURLToPath } from "node:url";
import tseslint from "typescript-eslint";

const files = ["**/*.ts"];

export default tseslint.config(
    { ignores: ["dist/", "node_modules/"] },
    ...tseslint.configs.recommendedTypeChecked.map((config) => ({ ...config, files })),
    {
        files,
        languageOptions: {
            parserOptions: {
                projectService: true,
                tsconfigRootDir: fileURLToPath(new URL(".", import.meta.url)),
            },
        },
        rules: {
            // The runner waits for the tests.
            "@typescript-eslint/no-floating-promises": [
                "error",
                {
                    allowForKnownSafeCalls: [
                        { from: "package", package: "node:test", name: ["test"] },
                    ],
                },
            ],
        },
    },
);
